// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/media/decode/video_decoder.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <string_view>

#include "host/media/common/media_error.h"

namespace kelmo::host {

namespace {

// Errors in a row after which a decoder is taken to be at its end.
constexpr int kMostErrors = 10000;

bool Plausible(AVRational rate) {
    const double value = rate.den > 0 ? av_q2d(rate) : 0;
    return value >= 0.01 && value <= 1000;
}

// A base rate above this is a mere tick of the time stamps.
constexpr double kFastestBase = 60;

bool SaysInterlaced(const AVStream& stream) {
    return stream.codecpar->field_order > AV_FIELD_PROGRESSIVE;
}

// The base rate is the one whose ticks all time stamps fall on: a clip with dropped frames keeps
// it, and its frames are held. That of an interlaced stream counts fields, and an absurd one says
// nothing: then the mean rate tells how many pictures there are.
FrameRate RateOf(const AVStream& stream) {
    const AVRational mean = stream.avg_frame_rate;
    const AVRational nominal = stream.r_frame_rate;
    AVRational chosen = {25, 1};
    if (Plausible(mean)) {
        chosen = mean;
        const double ratio = Plausible(nominal) ? av_q2d(nominal) / av_q2d(mean) : 0;
        const bool held = ratio > 1 && av_q2d(nominal) <= kFastestBase && !SaysInterlaced(stream);
        if (held || std::abs(ratio - 1) < 0.005) chosen = nominal;
    } else if (Plausible(nominal)) {
        chosen = nominal;
    }
    int numerator = 0, denominator = 1;
    av_reduce(&numerator, &denominator, chosen.num, chosen.den, 1 << 20);
    return {numerator, denominator};
}

bool Damaged(const AVFrame& frame) {
    return (frame.flags & AV_FRAME_FLAG_CORRUPT) || frame.decode_error_flags != 0;
}

}  // namespace

VideoDecoder::VideoDecoder(const std::string& path, FrameRate sequenceRate, int threads,
                           bool deinterlace)
    : path(path),
      sequenceRate(sequenceRate),
      threads(threads),
      deinterlace(deinterlace),
      deinterlacer(threads) {
    Open();
}

void VideoDecoder::Open() {
    codec.reset();
    input = MediaInput::Open(path, sequenceRate);
    if (!input.Video()) {
        throw MediaError(MediaError::Side::kInput, "cannot read '" + path +
                                                       "': it holds no pictures" +
                                                       (input.Audio() ? ", only sound" : ""));
    }
    input.KeepOnly(input.videoStream);
    codec = OpenDecoder(input, *input.Video(), threads);
    rate = RateOf(*input.Video());
    interlaced = SaysInterlaced(*input.Video());
    deinterlacer.Reset();
    draining = false;
    lastTimeKnown = false;
    atStart = true;
}

void VideoDecoder::NoteDamage(const std::string& reason) {
    if (damage++ > 0) return;
    damageReason = reason;
    damageTime = lastTimeKnown ? lastTime : 0;
}

// Gives the decoder one packet. False when there is nothing more to give.
bool VideoDecoder::FeedPacket() {
    if (draining) return false;
    for (int waits = 0;;) {
        const int error = av_read_frame(input.format.get(), packet.get());
        if (error == AVERROR(EAGAIN) && ++waits < kMostErrors) continue;
        if (error < 0) {
            if (error != AVERROR_EOF) NoteDamage(LibavErrorText(error));
            draining = true;
            avcodec_send_packet(codec.get(), nullptr);
            return true;
        }
        if (packet->stream_index == input.videoStream) break;
        av_packet_unref(packet.get());
    }
    const int error = avcodec_send_packet(codec.get(), packet.get());
    av_packet_unref(packet.get());
    if (error < 0 && error != AVERROR(EAGAIN)) NoteDamage(LibavErrorText(error));
    return true;
}

// A frame of the decoder: AVERROR(EAGAIN) when it wants a packet, AVERROR_EOF at the end.
int VideoDecoder::Receive(AVFrame& frame) {
    const int error = avcodec_receive_frame(codec.get(), &frame);
    if (error >= 0 && atStart && frame.interlaced_frame) interlaced = true;
    return error;
}

int VideoDecoder::ReceiveDeinterlaced(AVFrame& frame) {
    for (;;) {
        const int taken = deinterlacer.Take(frame);
        if (taken != AVERROR(EAGAIN)) return taken;
        int error = Receive(frame);
        const bool end = error == AVERROR_EOF;
        if (error < 0 && !end) return error;
        if (!end && !(interlaced && deinterlace)) return error;
        // Half a picture is not to spoil its neighbours.
        if (!end && Damaged(frame) && delivered) return error;
        error = deinterlacer.Give(end ? nullptr : &frame, Stream().time_base);
        if (error < 0) return error;
        if (end && deinterlacer.Take(frame) < 0) return AVERROR_EOF;
        if (end) return 0;
    }
}

void VideoDecoder::Next(Frame& frame) {
    frame.present = false;
    for (int errors = 0; errors < kMostErrors;) {
        av_frame_unref(frame.data.get());
        const int error = ReceiveDeinterlaced(*frame.data);
        if (error == AVERROR(EAGAIN)) {
            if (!FeedPacket()) return;
            continue;
        }
        if (error == AVERROR_EOF) return;
        if (error < 0) {
            NoteDamage(LibavErrorText(error));
            ++errors;
            continue;
        }
        Describe(frame);
        if (!Damaged(*frame.data)) {
            delivered = true;
            frame.present = true;
            return;
        }
        NoteDamage("a damaged picture");
        // Half a picture is better than none at all.
        if (!delivered) {
            frame.present = true;
            return;
        }
    }
}

void VideoDecoder::Describe(Frame& frame) {
    const AVRational timeBase = Stream().time_base;
    frame.duration = 0;
    if (frame.data->pkt_duration > 0) {
        frame.duration = Seconds(frame.data->pkt_duration, timeBase);
    }
    if (frame.duration <= 0) frame.duration = 1 / rate.PerSecond();
    const int64_t stamp = frame.data->best_effort_timestamp;
    const double guess = lastTimeKnown ? lastTime + 1 / rate.PerSecond() : 0;
    frame.time = guess;
    if (stamp != AV_NOPTS_VALUE) {
        // AVI counts packets: the first picture comes late by the reordering, and yet it is meant
        // to be seen with the first sound.
        if (atStart && std::string_view(input.format->iformat->name) == "avi") {
            input.origin = Seconds(stamp, timeBase);
        }
        const double time = Seconds(stamp, timeBase) - input.origin;
        // Time never stands still or runs back between two frames.
        if (!lastTimeKnown || time > lastTime) frame.time = time;
    }
    atStart = false;
    lastTime = frame.time;
    lastTimeKnown = true;
}

bool VideoDecoder::Seekable() const {
    if (!input.seekable) return false;
    static constexpr std::string_view kStamped[] = {
        "mov,mp4,m4a,3gp,3g2,mj2", "matroska,webm", "mpegts", "nut", "flv", "image2"};
    const std::string_view name = input.format->iformat->name;
    const bool stamped =
        std::find(std::begin(kStamped), std::end(kStamped), name) != std::end(kStamped);
    return stamped || (name == "avi" && codec->has_b_frames == 0);
}

bool VideoDecoder::SeekBefore(double seconds) {
    if (!Seekable() || !input.SeekBefore(input.videoStream, seconds)) return false;
    avcodec_flush_buffers(codec.get());
    deinterlacer.Reset();
    draining = false;
    lastTimeKnown = false;
    return true;
}

bool VideoDecoder::Restart() {
    if (path == "-") return false;
    try {
        Open();
        return true;
    } catch (const MediaError&) {
        return false;
    }
}

}  // namespace kelmo::host
