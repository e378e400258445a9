// SPDX-License-Identifier: GPL-3.0-or-later
#include "plugin/host_frames.h"

#include "platform/host_access.h"

namespace kelmo {

namespace {

// One frame of silence at 25 a second: 44100 Hz, two channels.
constexpr int32_t kSilenceChannels = 2;
constexpr int32_t kSilenceSamples = 1764;
constexpr int32_t kSilenceBytes = 7056;
constexpr int32_t kDefaultAudioFormat = 7;
constexpr int32_t kMaxKnownAudioFormat = 10;

alignas(8) constexpr uint8_t kSilence[kSilenceBytes] = {};

void TakeSize(FrameRecord& record, QorFrame& frame) {
    record.width = frame.GetWidth();
    record.height = frame.GetHeight();
    record.stride = frame.GetStride();
}

/// A frame that lives on the GPU, without its pixels.
bool TakeSurface(FrameRecord& record, QorFrame& frame) {
    void* const surface = frame.GetSurface();
    QorGpuDeviceSuite* const devices = GpuDevices();
    if (!surface || !devices) return false;
    int32_t texture = 0;
    devices->GetSurfaceTexture(surface, &texture, 0);
    record.tag = -1;
    record.texture = texture;
    record.isCpu = 0;
    TakeSize(record, frame);
    return true;
}

bool TakePixels(FrameRecord& record, QorFrame& frame) {
    record.pixels = frame.GetPixels();
    if (!record.pixels) return false;
    TakeSize(record, frame);
    return true;
}

}  // namespace

FrameRecord InputRecord(QorFrame* frame) {
    FrameRecord record;
    if (!frame) return record;
    if (TakeSurface(record, *frame)) {
        record.pixels = frame->GetPixels();
    } else {
        TakePixels(record, *frame);
    }
    return record;
}

FrameRecord OutputRecord(QorFrame* frame) {
    FrameRecord record;
    if (frame && !TakeSurface(record, *frame)) TakePixels(record, *frame);
    return record;
}

AudioInput AudioOf(QorAudio* audio) {
    AudioInput input{kSilenceChannels, kSilenceSamples, kSilenceBytes, kDefaultAudioFormat,
                     kSilence};
    if (!audio) return input;
    input.channels = audio->GetChannels();
    input.samples = audio->GetSamples();
    input.bytes = audio->GetBytes();
    input.data = audio->GetData();
    const int32_t format = audio->GetFormat();
    if (format <= kMaxKnownAudioFormat) input.format = format;
    return input;
}

}  // namespace kelmo
