// SPDX-License-Identifier: GPL-3.0-or-later
// A compressed texture as it lies in a file.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "framework/astc/astc_file.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, std::size_t size) {
    std::string error;
    const std::unique_ptr<astc_codec::ASTCFile> file =
        astc_codec::LoadFromMemory(bytes, size, error);
    if (!file) {
        if (error.empty()) std::abort();
        return 0;
    }
    // A block of 16 bytes is at most 255 x 255 pixels here: sizes without footprint load as well.
    constexpr uint64_t kMaxPixels = 1 << 20;
    if (file->width * file->height > kMaxPixels) return 0;
    const std::size_t stride = file->width * 4;
    // Exactly as large as the picture, so that a sanitizer sees a pixel too many.
    std::vector<uint8_t> first(stride * file->height);
    std::vector<uint8_t> second(first.size());
    const bool decoded = astc_codec::DecompressToImage(*file, first.data(), first.size(), stride);
    if (astc_codec::DecompressToImage(*file, second.data(), second.size(), stride) != decoded) {
        std::abort();
    }
    if (decoded && first != second) std::abort();
    return 0;
}
