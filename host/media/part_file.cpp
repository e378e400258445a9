// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/media/part_file.h"

#include <cerrno>
#include <filesystem>
#include <system_error>

#include "host/media/media_error.h"

namespace kelmo::host {

namespace {

namespace fs = std::filesystem;

fs::path NativePath(const std::string& path) {
    return fs::path(std::u8string(path.begin(), path.end()));
}

}  // namespace

void FailToWrite(const std::string& path, const std::string& reason) {
    throw MediaError(MediaError::Side::kOutput, "cannot write '" + path + "': " + reason);
}

PartFile::PartFile(const std::string& path) : path(path), partPath(path + ".part") {
    std::error_code ignored;
    const fs::path native = NativePath(path);
    if (fs::is_directory(native, ignored)) {
        FailToWrite(path, "it is a folder; add the name of a file");
    }
    const fs::path folder = native.parent_path();
    if (!folder.empty() && !fs::is_directory(folder, ignored)) {
        FailToWrite(path, "the folder '" + folder.string() + "' does not exist; make it first");
    }
}

void PartFile::FailToOpen(int systemError) const {
    std::string reason = std::generic_category().message(systemError);
    if (systemError == EACCES || systemError == EPERM || systemError == EROFS) {
        reason = "no permission to write in that folder";
    }
    FailToWrite(path, reason);
}

void PartFile::Commit() {
    std::error_code error;
    fs::rename(NativePath(partPath), NativePath(path), error);
    if (error) {
        FailToWrite(path, "'" + partPath + "' cannot take its name: " + error.message());
    }
}

void PartFile::Discard() noexcept {
    std::error_code ignored;
    fs::remove(NativePath(partPath), ignored);
}

}  // namespace kelmo::host
