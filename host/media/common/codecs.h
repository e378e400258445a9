// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

namespace kelmo::host {

// One encoder or decoder that we like to have.
struct CodecEntry {
    std::string name;     // libav's name
    std::string purpose;  // "mp4, mov, mkv: video"
    bool encoder = false;
    bool available = false;
};

// All that the reader and the writer use by default, and whether this libav has it.
std::vector<CodecEntry> Codecs();

// "libavformat 59.27.100, libavcodec ...": what is really loaded.
std::string MediaLibraries();

}  // namespace kelmo::host
