// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/media/encode/picture_files.h"

#include "host/media/common/file_names.h"

namespace kelmo::host {

PictureFiles::PictureFiles(const std::string& path, std::vector<std::string>& warnings)
    : path(path), numbered(IsNumberPattern(path)), warnings(warnings) {
    // Says at once what is wrong with the place, before anybody renders.
    PartFile probe(path);
    if (probe.Direct()) return;
    probe.Write("", 0);
    probe.Discard();
}

void PictureFiles::WriteVideo(AVPacket& packet) {
    ++count;
    if (!numbered && count > 1) {
        AddOnce(warnings, "'" + path +
                              "' holds the first frame only; a name like "
                              "\"name%04d.png\" gives one picture a frame");
        return;
    }
    const std::string name = numbered ? NumberedFile(path, count) : path;
    if (name.empty()) FailToWrite(path, "the pattern must hold one number, like \"name%04d.png\"");
    PartFile part(name);
    std::error_code ignored;
    const bool replaces = std::filesystem::exists(NativePath(name), ignored);
    part.Write(packet.data, static_cast<size_t>(packet.size));
    if (replaces) {
        waiting.push_back(std::move(part));
        return;
    }
    try {
        part.Commit();
    } catch (...) {
        part.Discard();
        throw;
    }
    fresh.push_back(name);
}

void PictureFiles::Finish(double) {
    if (count == 0) FailToWrite(path, "no frame was given");
    for (; !waiting.empty(); waiting.pop_back()) waiting.back().Commit();
}

void PictureFiles::Abort() noexcept {
    for (PartFile& part : waiting) part.Discard();
    for (const std::string& name : fresh) {
        std::error_code ignored;
        std::filesystem::remove(NativePath(name), ignored);
    }
    waiting.clear();
    fresh.clear();
}

}  // namespace kelmo::host
