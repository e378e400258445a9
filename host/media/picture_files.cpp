// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/media/picture_files.h"

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <memory>

#include "host/media/media_input.h"
#include "host/media/part_file.h"

namespace kelmo::host {

namespace {

struct FileCloser {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

void WriteWhole(const PartFile& part, const AVPacket& packet) {
    std::unique_ptr<std::FILE, FileCloser> file(std::fopen(part.PartPath().c_str(), "wb"));
    if (!file) part.FailToOpen(errno);
    const auto size = static_cast<size_t>(packet.size);
    const bool written =
        std::fwrite(packet.data, 1, size, file.get()) == size && std::fflush(file.get()) == 0;
    if (!written) part.FailToOpen(errno);
}

}  // namespace

PictureFiles::PictureFiles(const std::string& path, std::vector<std::string>& warnings)
    : path(path), numbered(IsNumberPattern(path)), warnings(warnings) {
    // Says at once what is wrong with the place, before anybody renders.
    const PartFile probe(path);
    std::unique_ptr<std::FILE, FileCloser> file(std::fopen(probe.PartPath().c_str(), "wb"));
    if (!file) probe.FailToOpen(errno);
    file.reset();
    PartFile(path).Discard();
}

void PictureFiles::WriteVideo(AVPacket& packet) {
    ++count;
    if (!numbered && count > 1) {
        AddOnce(warnings, "'" + path +
                              "' holds the first frame only; a name like "
                              "\"name%04d.png\" gives one picture a frame");
        return;
    }
    std::string name = path;
    if (numbered) {
        char text[4096];
        if (av_get_frame_filename(text, sizeof text, path.c_str(), static_cast<int>(count)) < 0) {
            FailToWrite(path, "the pattern must hold one number, like \"name%04d.png\"");
        }
        name = text;
    }
    PartFile part(name);
    try {
        WriteWhole(part, packet);
        part.Commit();
    } catch (...) {
        part.Discard();
        throw;
    }
    written.push_back(name);
}

void PictureFiles::Finish(double) {
    if (count == 0) FailToWrite(path, "no frame was given");
}

void PictureFiles::Abort() noexcept {
    for (const std::string& name : written) {
        std::error_code ignored;
        std::filesystem::remove(std::filesystem::path(std::u8string(name.begin(), name.end())),
                                ignored);
    }
    written.clear();
}

}  // namespace kelmo::host
