// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>

#include "host/media/common/libav.h"

namespace kelmo::host {

// Private to this folder: where encoded pictures and sound go. All throw MediaError unless they say
// noexcept.
class OutputFile {
public:
    virtual ~OutputFile() = default;

    virtual void WriteVideo(AVPacket& packet) = 0;
    virtual void WriteAudio(const int16_t* samples, int count) = 0;
    // Pictures up to this moment (seconds) were given: sound that belongs beside them may follow.
    virtual void AdvanceSound(double seconds) = 0;
    // `seconds` of pictures were written in all.
    virtual void Finish(double seconds) = 0;
    virtual void Abort() noexcept = 0;
    virtual std::string SoundDescription() const { return {}; }
};

}  // namespace kelmo::host
