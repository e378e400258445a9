// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/media/sound/audio_encoder.h"

#include <algorithm>

#include "host/media/common/media_error.h"

namespace kelmo::host {

namespace {

constexpr int kBitsASecond = 192000;
constexpr int kFrameOfPcm = 1024;  // samples; for codecs that take any number

// The same rate if the codec knows it, else the next higher one, else its highest.
int RateFor(const AVCodec& codec, int wanted) {
    if (!codec.supported_samplerates) return wanted;
    int higher = 0, highest = 0;
    for (const int* rate = codec.supported_samplerates; *rate; ++rate) {
        if (*rate >= wanted && (higher == 0 || *rate < higher)) higher = *rate;
        highest = std::max(highest, *rate);
    }
    return higher ? higher : highest;
}

}  // namespace

AudioEncoder::AudioEncoder(const std::string& path, const AVCodec& codec, int samplesPerSecond,
                           bool globalHeader, bool reproducible)
    : path(path), context(avcodec_alloc_context3(&codec)) {
    if (!context) throw std::bad_alloc();
    AVChannelLayout stereo = AV_CHANNEL_LAYOUT_STEREO;
    av_channel_layout_copy(&context->ch_layout, &stereo);
    context->sample_rate = RateFor(codec, samplesPerSecond);
    context->sample_fmt = codec.sample_fmts ? codec.sample_fmts[0] : AV_SAMPLE_FMT_S16;
    context->time_base = {1, context->sample_rate};
    context->bit_rate = kBitsASecond;
    if (globalHeader) context->flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
    if (reproducible) context->flags |= AV_CODEC_FLAG_BITEXACT;
    int error = avcodec_open2(context.get(), &codec, nullptr);
    if (error < 0) Fail(std::string("the encoder '") + codec.name + "' does not start", error);

    SwrContext* swr = nullptr;
    error = swr_alloc_set_opts2(&swr, &stereo, context->sample_fmt, context->sample_rate, &stereo,
                                AV_SAMPLE_FMT_S16, samplesPerSecond, 0, nullptr);
    resampler.reset(swr);
    if (error >= 0) error = swr_init(swr);
    if (error < 0) Fail("the sound cannot be resampled", error);
    fifo.reset(av_audio_fifo_alloc(context->sample_fmt, 2, kFrameOfPcm));
    if (!fifo) throw std::bad_alloc();
}

void AudioEncoder::Fail(const std::string& step, int error) const {
    throw MediaError(MediaError::Side::kOutput,
                     "cannot write '" + path + "': " + step + ": " + LibavErrorText(error));
}

void AudioEncoder::Convert(const int16_t* samples, int count) {
    const int room = swr_get_out_samples(resampler.get(), count);
    if (room <= 0) return;
    if (converted->nb_samples < room || !converted->buf[0]) {
        av_frame_unref(converted.get());
        converted->format = context->sample_fmt;
        converted->nb_samples = room;
        converted->sample_rate = context->sample_rate;
        av_channel_layout_copy(&converted->ch_layout, &context->ch_layout);
        if (av_frame_get_buffer(converted.get(), 0) < 0) throw std::bad_alloc();
    }
    const auto* in = reinterpret_cast<const uint8_t*>(samples);
    const int made = swr_convert(resampler.get(), converted->extended_data, room,
                                 samples ? &in : nullptr, count);
    if (made < 0) Fail("the sound cannot be resampled", made);
    void** planes = reinterpret_cast<void**>(converted->extended_data);
    if (av_audio_fifo_write(fifo.get(), planes, made) < made) throw std::bad_alloc();
}

void AudioEncoder::Encode(const int16_t* samples, int count, const Sink& sink) {
    if (count <= 0) return;
    Convert(samples, count);
    EncodeFrames(false, sink);
}

void AudioEncoder::EncodeFrames(bool all, const Sink& sink) {
    const int size = context->frame_size > 0 ? context->frame_size : kFrameOfPcm;
    while (av_audio_fifo_size(fifo.get()) >= (all ? 1 : size)) {
        av_frame_unref(frame.get());
        frame->format = context->sample_fmt;
        frame->nb_samples = std::min(size, av_audio_fifo_size(fifo.get()));
        frame->sample_rate = context->sample_rate;
        av_channel_layout_copy(&frame->ch_layout, &context->ch_layout);
        if (av_frame_get_buffer(frame.get(), 0) < 0) throw std::bad_alloc();
        av_audio_fifo_read(fifo.get(), reinterpret_cast<void**>(frame->extended_data),
                           frame->nb_samples);
        frame->pts = encoded;
        encoded += frame->nb_samples;
        Send(frame.get(), sink);
    }
}

void AudioEncoder::Send(const AVFrame* given, const Sink& sink) {
    int error = avcodec_send_frame(context.get(), given);
    if (error < 0 && error != AVERROR_EOF) Fail("the sound cannot be encoded", error);
    while ((error = avcodec_receive_packet(context.get(), packet.get())) >= 0) {
        sink(*packet);
        av_packet_unref(packet.get());
    }
    if (error != AVERROR(EAGAIN) && error != AVERROR_EOF) {
        Fail("the sound cannot be encoded", error);
    }
}

void AudioEncoder::Flush(const Sink& sink) {
    Convert(nullptr, 0);
    EncodeFrames(true, sink);
    Send(nullptr, sink);
}

}  // namespace kelmo::host
