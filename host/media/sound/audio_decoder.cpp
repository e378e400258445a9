// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/media/sound/audio_decoder.h"

#include <algorithm>
#include <cmath>
#include <string_view>

#include "host/media/common/media_error.h"

namespace kelmo::host {

namespace {

// Time stamps that are off by less than this (seconds) are rounding, not a gap.
constexpr double kGap = 0.05;
// What a decoder wants to hear before the sample that counts: MP3 and Opus remember most.
constexpr double kWarmUp = 0.25;
constexpr int kMostErrors = 10000;

// Only containers whose time stamps are stored with the packets lead to exact samples after a seek.
bool FormatSeeksExactly(const AVFormatContext& format) {
    const std::string_view name = format.iformat->name;
    return name.starts_with("mov,") || name.starts_with("matroska") || name == "wav" ||
           name == "flac";
}

}  // namespace

AudioDecoder::AudioDecoder(const std::string& path, int samplesPerSecond)
    : path(path), rate(samplesPerSecond) {
    Open();
}

AudioDecoder::~AudioDecoder() {
    av_channel_layout_uninit(&resamplerLayout);
}

void AudioDecoder::Open() {
    codec.reset();
    resampler.reset();
    draining = pending = placeKnown = false;
    input = MediaInput::Open(path);
    ended = !input.Audio();
    if (ended) return;
    input.KeepOnly(input.audioStream);
    try {
        codec = OpenDecoder(input, *input.Audio(), 1);
    } catch (const MediaError& error) {
        AddOnce(warnings, std::string(error.what()) + "; its sound is read as silence");
        ended = true;
    }
}

void AudioDecoder::Damaged(int error) {
    AddOnce(warnings,
            "the sound of '" + path + "' is damaged (" + LibavErrorText(error) + ") in places");
}

// Decodes into `frame`. False at the end.
bool AudioDecoder::NextFrame() {
    for (int errors = 0; errors < kMostErrors;) {
        const int received = avcodec_receive_frame(codec.get(), frame.get());
        if (received == 0) return true;
        if (received == AVERROR_EOF) return false;
        if (received != AVERROR(EAGAIN)) {
            Damaged(received);
            ++errors;
            continue;
        }
        if (draining) return false;
        const int read = av_read_frame(input.format.get(), packet.get());
        if (read == AVERROR(EAGAIN)) {
            ++errors;
            continue;
        }
        if (read < 0) {
            if (read != AVERROR_EOF) Damaged(read);
            draining = true;
            avcodec_send_packet(codec.get(), nullptr);
            continue;
        }
        if (packet->stream_index == input.audioStream) {
            const int sent = avcodec_send_packet(codec.get(), packet.get());
            if (sent < 0 && sent != AVERROR(EAGAIN)) Damaged(sent);
        }
        av_packet_unref(packet.get());
    }
    return false;
}

bool AudioDecoder::PrepareResampler(const AVFrame& decoded) {
    if (resampler && resamplerRate == decoded.sample_rate && resamplerFormat == decoded.format &&
        av_channel_layout_compare(&resamplerLayout, &decoded.ch_layout) == 0) {
        return true;
    }
    AVChannelLayout stereo = AV_CHANNEL_LAYOUT_STEREO;
    AVChannelLayout source = decoded.ch_layout;
    if (source.order == AV_CHANNEL_ORDER_UNSPEC) {
        av_channel_layout_default(&source, decoded.ch_layout.nb_channels);
    }
    SwrContext* context = nullptr;
    int error = swr_alloc_set_opts2(&context, &stereo, AV_SAMPLE_FMT_S16, rate, &source,
                                    static_cast<AVSampleFormat>(decoded.format),
                                    decoded.sample_rate, 0, nullptr);
    resampler.reset(context);
    if (error >= 0) {
        // One channel is both sides at full loudness; the mix would take 3 dB off.
        if (source.nb_channels == 1) {
            const double both[] = {1, 1};
            swr_set_matrix(context, both, 1);
        }
        error = swr_init(context);
    }
    if (error < 0) {
        resampler.reset();
        Damaged(error);
        return false;
    }
    resamplerRate = decoded.sample_rate;
    resamplerFormat = decoded.format;
    return av_channel_layout_copy(&resamplerLayout, &decoded.ch_layout) >= 0;
}

// With no frame: what the resampler still holds. False if nothing came out.
bool AudioDecoder::Resample(const AVFrame* decoded, std::vector<int16_t>& samples) {
    if (!resampler) return false;
    const int input = decoded ? decoded->nb_samples : 0;
    const int room = swr_get_out_samples(resampler.get(), input) + 16;
    const size_t before = samples.size();
    samples.resize(before + 2 * static_cast<size_t>(std::max(room, 0)));
    auto* out = reinterpret_cast<uint8_t*>(samples.data() + before);
    const int made =
        swr_convert(resampler.get(), &out, room,
                    decoded ? const_cast<const uint8_t**>(decoded->extended_data) : nullptr, input);
    samples.resize(before + 2 * static_cast<size_t>(std::max(made, 0)));
    if (made < 0) Damaged(made);
    return made > 0;
}

AudioDecoder::Run AudioDecoder::Next(std::vector<int16_t>& samples, int64_t& position) {
    while (!ended) {
        if (!pending && !NextFrame()) {
            ended = true;
            if (Resample(nullptr, samples)) return Run::kContinues;
            break;
        }
        double time = expectedTime;
        if (frame->pts != AV_NOPTS_VALUE) {
            time = Seconds(frame->pts, input.Audio()->time_base) - input.origin;
        } else if (!placeKnown) {
            time = 0;
        }
        const bool gap = !placeKnown || std::abs(time - expectedTime) > kGap;
        const bool changed = resampler && resamplerRate != frame->sample_rate;
        if ((gap || changed) && resampler) {
            // The tail of what came before belongs to its own place.
            pending = true;
            const bool tail = placeKnown && Resample(nullptr, samples);
            resampler.reset();
            if (tail) return Run::kContinues;
        }
        pending = false;
        if (gap) expectedTime = time;
        expectedTime += static_cast<double>(frame->nb_samples) / std::max(frame->sample_rate, 1);
        placeKnown = true;
        const bool made = PrepareResampler(*frame) && Resample(frame.get(), samples);
        av_frame_unref(frame.get());
        if (gap) {
            position = std::llround(time * rate);
            return Run::kStartsAt;
        }
        if (made) return Run::kContinues;
    }
    return Run::kEnd;
}

bool AudioDecoder::SeeksExactly() const {
    return codec && input.seekable && FormatSeeksExactly(*input.format);
}

void AudioDecoder::SeekBefore(int64_t sample) {
    if (!codec) return;
    const double seconds = static_cast<double>(sample) / rate - kWarmUp;
    if (seconds > 0 && SeeksExactly() && input.SeekBefore(input.audioStream, seconds)) {
        avcodec_flush_buffers(codec.get());
        av_frame_unref(frame.get());
        resampler.reset();
        draining = pending = ended = placeKnown = false;
        return;
    }
    if (path == "-") {
        AddOnce(warnings, "the sound of standard input cannot be read from its start again");
        ended = true;
        return;
    }
    try {
        Open();
    } catch (const MediaError& error) {
        AddOnce(warnings, error.what());
        ended = true;
        codec.reset();
    }
}

}  // namespace kelmo::host
