// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

#include "host/media/common/frame_rate.h"
#include "host/media/common/libav.h"
#include "host/media/decode/deinterlacer.h"
#include "host/media/decode/media_input.h"

namespace kelmo::host {

// Private to this folder: the frames of a file one after the other, in the order of display, with
// their times. Frames that did not decode well are left out and counted.
class VideoDecoder {
public:
    // Interlaced streams are deinterlaced if `deinterlace` says so. Throws MediaError.
    VideoDecoder(const std::string& path, FrameRate sequenceRate, int threads, bool deinterlace);

    struct Frame {
        LibavPtr<AVFrame> data = NewFrame();
        double time = 0;      // seconds after the origin
        double duration = 0;  // seconds
        bool present = false;
    };

    // The next frame; frame.present is false at the end.
    void Next(Frame& frame);

    // Continues at the key frame before `seconds`. False if the file cannot; then Restart.
    bool SeekBefore(double seconds);

    // Opens the file again. False if that is impossible (standard input) or fails.
    bool Restart();

    const MediaInput& Input() const { return input; }
    const AVCodecContext& Codec() const { return *codec; }
    AVStream& Stream() const { return *input.Video(); }
    FrameRate Rate() const { return rate; }
    bool Interlaced() const { return interlaced; }
    // Whether times are exact after a seek. Containers that do not store a time stamp with every
    // frame lose count where frames are reordered.
    bool Seekable() const;

    // How much was left out so far, and the reason and time (seconds) of the first.
    int Damage() const { return damage; }
    const std::string& DamageReason() const { return damageReason; }
    double DamageTime() const { return damageTime; }

private:
    void Open();
    bool FeedPacket();
    int Receive(AVFrame& frame);
    int ReceiveDeinterlaced(AVFrame& frame);
    void Describe(Frame& frame);
    void NoteDamage(const std::string& reason);

    std::string path;
    FrameRate sequenceRate;
    int threads;
    MediaInput input;
    LibavPtr<AVCodecContext> codec;
    LibavPtr<AVPacket> packet = NewPacket();
    FrameRate rate;
    bool deinterlace;
    bool interlaced = false;  // as the stream says, or its first frame
    Deinterlacer deinterlacer;
    bool draining = false;
    bool delivered = false;  // a good frame since the beginning
    bool atStart = true;     // no frame yet since the file was opened
    double lastTime = 0;
    bool lastTimeKnown = false;
    int damage = 0;
    std::string damageReason;
    double damageTime = 0;
};

}  // namespace kelmo::host
