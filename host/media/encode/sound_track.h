// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "host/media/decode/media_input.h"
#include "host/media/encode/media_writer.h"
#include "host/media/sound/audio_encoder.h"
#include "host/media/sound/audio_reader.h"

namespace kelmo::host {

// Private to this folder: the sound of a container file, from one of three sources. It makes
// packets in its own time base; times are seconds after the first picture of the result.
class SoundTrack {
public:
    using Sink = std::function<void(AVPacket& packet)>;

    virtual ~SoundTrack() = default;

    // Fills the parameters and the time base of the stream before the header is written.
    virtual void Describe(AVStream& stream) const = 0;
    virtual AVRational TimeBase() const = 0;
    virtual std::string Description() const = 0;
    virtual void WriteUntil(double seconds, const Sink& sink) = 0;
    virtual void WriteSamples(const int16_t*, int, const Sink&) {}
    // `seconds`: where the pictures end.
    virtual void Finish(double seconds, const Sink& sink) = 0;
};

// What the options ask for and the container can hold; null without sound. Warnings say what is
// left out and why. Throws MediaError.
std::unique_ptr<SoundTrack> MakeSoundTrack(const std::string& path, const AVOutputFormat& container,
                                           const WriterOptions& options,
                                           std::vector<std::string>& warnings);

}  // namespace kelmo::host
