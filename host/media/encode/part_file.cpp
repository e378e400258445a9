// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/media/encode/part_file.h"

#include <cerrno>
#include <cstdio>
#include <memory>
#include <system_error>

#include "host/media/common/file_names.h"
#include "host/media/common/media_error.h"

namespace kelmo::host {

namespace {

namespace fs = std::filesystem;

struct FileCloser {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

bool IsSpecial(const std::string& path) {
    std::error_code ignored;
    const fs::file_status status = fs::status(NativePath(path), ignored);
    return fs::exists(status) && !fs::is_regular_file(status) && !fs::is_directory(status);
}

}  // namespace

void FailToWrite(const std::string& path, const std::string& reason) {
    throw MediaError(MediaError::Side::kOutput, "cannot write '" + path + "': " + reason);
}

PartFile::PartFile(const std::string& path)
    : path(path), partPath(path + ".part"), direct(IsSpecial(path)) {
    if (direct) partPath = path;
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

void PartFile::Write(const void* bytes, size_t size) {
    std::unique_ptr<std::FILE, FileCloser> file(std::fopen(partPath.c_str(), "wb"));
    if (!file) FailToOpen(errno);
    if (std::fwrite(bytes, 1, size, file.get()) == size && std::fflush(file.get()) == 0) return;
    const int error = errno;
    Discard();
    FailToOpen(error);
}

void PartFile::Commit() {
    if (direct) return;
    std::error_code error;
    fs::rename(NativePath(partPath), NativePath(path), error);
    if (error) {
        FailToWrite(path, "'" + partPath + "' cannot take its name: " + error.message());
    }
}

void PartFile::Discard() noexcept {
    if (direct) return;
    std::error_code ignored;
    fs::remove(NativePath(partPath), ignored);
}

}  // namespace kelmo::host
