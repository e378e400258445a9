// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "host/media/common/libav.h"
#include "host/media/decode/media_input.h"

namespace kelmo::host {

// Private to this folder: the sound of a file as a sequence of stereo samples at one rate, each run
// of them with its place in time.
class AudioDecoder {
public:
    // Throws MediaError if the file cannot be opened. A file without sound, or with a sound that no
    // decoder knows, is at its end at once.
    AudioDecoder(const std::string& path, int samplesPerSecond);
    ~AudioDecoder();
    AudioDecoder(const AudioDecoder&) = delete;
    AudioDecoder& operator=(const AudioDecoder&) = delete;

    // Appends the next samples to `samples` (pairs). `position` is the sample number of the first
    // of them after the origin, if that is not simply where the last run ended; otherwise it is
    // left alone and the result is kContinues.
    enum class Run { kContinues, kStartsAt, kEnd };
    Run Next(std::vector<int16_t>& samples, int64_t& position);

    // Continues a little before this sample, so that the decoder is warm when it gets there. Begins
    // again from the start where a seek cannot be trusted.
    void SeekBefore(int64_t sample);

    // Whether SeekBefore is a leap and no new beginning.
    bool SeeksExactly() const;

    const MediaInput& Input() const { return input; }
    const std::vector<std::string>& Warnings() const { return warnings; }

private:
    void Open();
    bool NextFrame();
    bool Resample(const AVFrame* decoded, std::vector<int16_t>& samples);
    bool PrepareResampler(const AVFrame& decoded);
    void Damaged(int error);

    std::string path;
    int rate;
    MediaInput input;
    LibavPtr<AVCodecContext> codec;
    LibavPtr<SwrContext> resampler;
    LibavPtr<AVFrame> frame = NewFrame();
    LibavPtr<AVPacket> packet = NewPacket();
    AVChannelLayout resamplerLayout{};
    int resamplerRate = 0;
    int resamplerFormat = -1;
    bool draining = false;
    bool pending = false;  // `frame` waits: what came before it must be flushed first
    bool ended = false;
    bool placeKnown = false;
    double expectedTime = 0;  // seconds: where the next frame starts if nothing is missing
    std::vector<std::string> warnings;
};

}  // namespace kelmo::host
