// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

/// ASTC: textures of blocks of 16 bytes, from 4 x 4 to 12 x 12 pixels each. The decoder handles
/// two-dimensional blocks of low dynamic range; it follows the Khronos Data Format Specification.
namespace astc_codec {

/// A picture in the plain file container (".astc"), still compressed. Owns its bytes.
struct ASTCFile {
    /// In pixels.
    uint64_t width = 0;
    uint64_t height = 0;
    uint64_t depth = 0;
    uint64_t blockWidth = 0;
    uint64_t blockHeight = 0;
    uint64_t blockDepth = 0;
    /// 16 bytes a block, row by row from the top left.
    std::string blocks;
};

/// Reads a file from memory. Null, with `error` saying why, for bytes that are not one. Depth is
/// not looked at: a file of more than one layer fails for its length.
std::unique_ptr<ASTCFile> LoadFromMemory(const void* data, std::size_t length, std::string& error);

/// Decodes to R, G, B, A bytes, rows from the top, `stride` bytes apart, on OpenCV's threads.
/// Pixels are written to the picture's rows only, never beyond `bufferSize`.
///
/// False for an unknown block size, an empty picture, a buffer or stride that does not fit, and as
/// soon as a block does not decode; `pixels` may hold parts of the picture then.
bool DecompressToImage(const ASTCFile& file, uint8_t* pixels, std::size_t bufferSize,
                       std::size_t stride);

}  // namespace astc_codec
