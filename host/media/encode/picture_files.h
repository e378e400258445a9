// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <vector>

#include "host/media/encode/output_file.h"
#include "host/media/encode/part_file.h"

namespace kelmo::host {

// Private to this folder: one picture, or one a frame by a pattern of numbers, from 1 on. A new one
// has its name as soon as it is complete; one that replaces an older file waits as a part file
// until Finish. Abort removes them all, and older files are as they were.
class PictureFiles : public OutputFile {
public:
    PictureFiles(const std::string& path, std::vector<std::string>& warnings);

    void WriteVideo(AVPacket& packet) override;
    void WriteAudio(const int16_t*, int) override {}
    void AdvanceSound(double) override {}
    void Finish(double seconds) override;
    void Abort() noexcept override;

private:
    std::string path;
    bool numbered;
    std::vector<std::string>& warnings;
    int64_t count = 0;
    std::vector<PartFile> waiting;
    std::vector<std::string> fresh;
};

}  // namespace kelmo::host
