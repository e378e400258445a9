// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/file_system.h"

#include <algorithm>
#include <fstream>
#include <system_error>

#include "platform/host_access.h"

namespace kelmo {

namespace fs = std::filesystem;

fs::path NativePath(std::string_view path) {
#ifdef _WIN32
    return fs::path(std::u8string(path.begin(), path.end()));
#else
    return fs::path(path);
#endif
}

std::string Utf8Path(const fs::path& path) {
#ifdef _WIN32
    const std::u8string text = path.u8string();
    return std::string(text.begin(), text.end());
#else
    return path.native();
#endif
}

std::vector<FolderEntry> ListFolder(std::string_view folder) {
    std::vector<FolderEntry> entries;
    try {
        std::error_code error;
        fs::directory_iterator place(NativePath(folder), error);
        for (; !error && place != fs::directory_iterator(); place.increment(error)) {
            std::error_code unknownKind;
            const fs::file_type kind = place->status(unknownKind).type();
            entries.push_back({Utf8Path(place->path().filename()), kind == fs::file_type::directory,
                               kind == fs::file_type::regular});
        }
        if (error && error != std::errc::no_such_file_or_directory &&
            error != std::errc::not_a_directory) {
            LogWarning("cannot read the folder %.*s: %s", static_cast<int>(folder.size()),
                       folder.data(), error.message().c_str());
        }
    } catch (const std::exception&) {
        // A name that has no UTF-8 form, or no memory: what was listed so far stays.
    }
    std::sort(entries.begin(), entries.end(),
              [](const FolderEntry& a, const FolderEntry& b) { return a.name < b.name; });
    return entries;
}

bool ReadWholeFile(std::string_view path, std::string& bytes) {
    bytes.clear();
    if (!FileExists(path)) {
        return false;
    }
    try {
        std::ifstream stream(NativePath(path), std::ios::binary);
        if (!stream) {
            return false;
        }
        // Read in pieces rather than by the size that the file claims: pipes and /proc claim 0.
        constexpr std::size_t kPiece = 1 << 16;
        for (std::size_t filled = 0; stream; bytes.resize(filled)) {
            bytes.resize(std::max(filled + kPiece, filled * 2));
            stream.read(bytes.data() + filled, static_cast<std::streamsize>(bytes.size() - filled));
            filled += static_cast<std::size_t>(stream.gcount());
        }
        if (stream.bad()) {
            bytes.clear();
            return false;
        }
        return true;
    } catch (const std::exception&) {
        bytes.clear();
        return false;
    }
}

bool FileExists(std::string_view path) {
    try {
        std::error_code error;
        const fs::file_status status = fs::status(NativePath(path), error);
        return !error && fs::exists(status) && !fs::is_directory(status);
    } catch (const std::exception&) {
        return false;
    }
}

bool FolderExists(std::string_view path) {
    try {
        std::error_code error;
        return fs::is_directory(NativePath(path), error) && !error;
    } catch (const std::exception&) {
        return false;
    }
}

std::string CanonicalPath(std::string_view path) {
    try {
        std::error_code error;
        const fs::path canonical = fs::canonical(NativePath(path), error);
        return error ? std::string() : Utf8Path(canonical);
    } catch (const std::exception&) {
        return {};
    }
}

std::string FolderOf(std::string_view path) {
    const std::size_t separator = path.find_last_of("/\\");
    return separator == std::string_view::npos ? std::string()
                                               : std::string(path.substr(0, separator + 1));
}

}  // namespace kelmo
