// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/temporary_folder.h"

#include <filesystem>
#include <fstream>
#include <random>
#include <system_error>

#include "platform/file_system.h"

namespace kelmo::test {

namespace fs = std::filesystem;

TemporaryFolder::TemporaryFolder() {
    std::random_device random;
    do {
        const std::string name = "kelmo-test-" + std::to_string(random());
        path = Utf8Path(fs::temp_directory_path() / name);
    } while (!fs::create_directories(NativePath(path)));
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    fs::remove_all(NativePath(path), ignored);
}

std::string TemporaryFolder::Path(std::string_view relative) const {
    return path + "/" + std::string(relative);
}

std::string TemporaryFolder::Write(std::string_view relative, std::string_view bytes) const {
    const std::string file = Path(relative);
    fs::create_directories(NativePath(file).parent_path());
    std::ofstream(NativePath(file), std::ios::binary)
        .write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return file;
}

std::string TemporaryFolder::MakeFolder(std::string_view relative) const {
    const std::string folder = Path(relative);
    fs::create_directories(NativePath(folder));
    return folder;
}

void TemporaryFolder::LinkFolder(std::string_view relative, std::string_view absoluteTarget) const {
    fs::create_directory_symlink(NativePath(absoluteTarget), NativePath(Path(relative)));
}

}  // namespace kelmo::test
