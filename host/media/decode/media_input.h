// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

#include "host/media/common/frame_rate.h"
#include "host/media/common/libav.h"

namespace kelmo::host {

// Private to this folder: an opened file, its streams known. Throws MediaError with the file, the
// reason and a hint.
struct MediaInput {
    LibavPtr<AVFormatContext> format;
    std::string path;
    int videoStream = -1;  // -1: none; a cover picture of a song is none
    int audioStream = -1;
    // The moment that readers call 0, in seconds of the file: the first picture, or the first sound
    // of a file without pictures.
    double origin = 0;
    bool seekable = false;
    bool numbered = false;  // several files by a pattern

    static MediaInput Open(const std::string& path, FrameRate sequenceRate = {25, 1});

    AVStream* Video() const { return videoStream < 0 ? nullptr : format->streams[videoStream]; }
    AVStream* Audio() const { return audioStream < 0 ? nullptr : format->streams[audioStream]; }

    // Skips the packets of all other streams while reading.
    void KeepOnly(int stream);

    // Seconds of a stream after the origin; 0 when unknown. `exact`, if given, tells whether the
    // stream itself says so or only the file as a whole.
    double DurationOf(const AVStream& stream, bool* exact = nullptr) const;

    // Goes to the last place before `seconds` (after the origin) where decoding can begin.
    bool SeekBefore(int stream, double seconds);
};

// Opens the decoder of a stream. Throws MediaError.
LibavPtr<AVCodecContext> OpenDecoder(const MediaInput& input, const AVStream& stream, int threads);

}  // namespace kelmo::host
