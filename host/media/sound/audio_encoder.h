// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

extern "C" {
#include <libavutil/audio_fifo.h>
}

#include "host/media/common/libav.h"

namespace kelmo::host {

// Private to this folder: encodes interleaved 16-bit stereo. Time stamps count samples of the
// encoder's own rate, from 0.
class AudioEncoder {
public:
    using Sink = std::function<void(AVPacket& packet)>;

    // Throws MediaError. `codec` may run at another rate than the samples: Opus knows 48 kHz alone.
    AudioEncoder(const std::string& path, const AVCodec& codec, int samplesPerSecond,
                 bool globalHeader, bool reproducible);

    const AVCodecContext& Context() const { return *context; }

    void Encode(const int16_t* samples, int count, const Sink& sink);
    void Flush(const Sink& sink);

private:
    void Convert(const int16_t* samples, int count);
    void EncodeFrames(bool all, const Sink& sink);
    void Send(const AVFrame* frame, const Sink& sink);
    [[noreturn]] void Fail(const std::string& step, int error) const;

    struct FifoDeleter {
        void operator()(AVAudioFifo* fifo) const { av_audio_fifo_free(fifo); }
    };

    std::string path;
    LibavPtr<AVCodecContext> context;
    LibavPtr<SwrContext> resampler;
    std::unique_ptr<AVAudioFifo, FifoDeleter> fifo;
    LibavPtr<AVFrame> frame = NewFrame();
    LibavPtr<AVFrame> converted = NewFrame();
    LibavPtr<AVPacket> packet = NewPacket();
    int64_t encoded = 0;  // samples
};

}  // namespace kelmo::host
