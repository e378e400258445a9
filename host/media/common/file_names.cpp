// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/media/common/file_names.h"

#include "host/media/common/libav.h"

namespace kelmo::host {

namespace fs = std::filesystem;

fs::path NativePath(const std::string& path) {
    return fs::path(std::u8string(path.begin(), path.end()));
}

bool IsNumberPattern(const std::string& path) {
    for (size_t at = path.find('%'); at != std::string::npos; at = path.find('%', at + 1)) {
        size_t end = at + 1;
        while (end < path.size() && path[end] >= '0' && path[end] <= '9') ++end;
        if (end < path.size() && path[end] == 'd') return true;
    }
    return false;
}

std::string NumberedFile(const std::string& pattern, int64_t number) {
    char text[4096];
    const int error =
        av_get_frame_filename(text, sizeof text, pattern.c_str(), static_cast<int>(number));
    return error < 0 ? std::string() : text;
}

bool CanBeReadAgain(const std::string& path) {
    if (path == "-") return false;
    std::error_code ignored;
    const fs::file_status status = fs::status(NativePath(path), ignored);
    return !fs::exists(status) || fs::is_regular_file(status);
}

}  // namespace kelmo::host
