// SPDX-License-Identifier: GPL-3.0-or-later
#include "framework/astc/astc_file.h"

#include <algorithm>
#include <atomic>
#include <cstring>
#include <opencv2/core/utility.hpp>

#include "framework/astc/astc_block.h"
#include "framework/astc/astc_footprint.h"

namespace astc_codec {

namespace {

constexpr std::size_t kHeaderBytes = 16;
constexpr uint64_t kMagic = 0x5CA1AB13;
constexpr std::size_t kPixelBytes = 4;

uint64_t LittleEndian(const uint8_t* bytes, int count) {
    uint64_t value = 0;
    for (int i = count - 1; i >= 0; --i) value = (value << 8) | bytes[i];
    return value;
}

uint64_t CeilDivide(uint64_t value, uint64_t divisor) {
    return (value + divisor - 1) / divisor;
}

uint64_t BlockCount(const ASTCFile& file) {
    return CeilDivide(file.width, file.blockWidth) * CeilDivide(file.height, file.blockHeight);
}

bool HasAllBlocks(const ASTCFile& file) {
    return file.blocks.size() % kBlockBytes == 0 &&
           file.blocks.size() / kBlockBytes == BlockCount(file);
}

/// Block rows, spread over threads.
class RowDecoder : public cv::ParallelLoopBody {
public:
    RowDecoder(const ASTCFile& file, const Footprint& footprint, uint8_t* pixels,
               std::size_t stride)
        : file(file), footprint(footprint), pixels(pixels), stride(stride) {}

    void operator()(const cv::Range& rows) const override {
        for (int row = rows.start; row < rows.end; ++row) {
            if (failed.load(std::memory_order_relaxed)) return;
            if (!DecodeRow(static_cast<std::size_t>(row))) failed.store(true);
        }
    }

    bool Failed() const { return failed.load(); }

private:
    bool DecodeRow(std::size_t row) const {
        const auto blockWidth = static_cast<std::size_t>(footprint.Width());
        const auto blockHeight = static_cast<std::size_t>(footprint.Height());
        const auto width = static_cast<std::size_t>(file.width);
        const std::size_t blocksPerRow = CeilDivide(width, blockWidth);
        const std::size_t top = row * blockHeight;
        const std::size_t rows = std::min(blockHeight, static_cast<std::size_t>(file.height) - top);
        const auto* block =
            reinterpret_cast<const uint8_t*>(file.blocks.data()) + row * blocksPerRow * kBlockBytes;
        uint8_t* const target = pixels + top * stride;
        alignas(16) uint8_t texels[(kMaxBlockTexels + kTexelPadding) * kPixelBytes];
        for (std::size_t left = 0; left < width; left += blockWidth, block += kBlockBytes) {
            if (!DecodeBlock(block, footprint, texels)) return false;
            const std::size_t columns = std::min(blockWidth, width - left);
            for (std::size_t y = 0; y < rows; ++y) {
                std::memcpy(target + y * stride + left * kPixelBytes,
                            texels + y * blockWidth * kPixelBytes, columns * kPixelBytes);
            }
        }
        return true;
    }

    const ASTCFile& file;
    const Footprint& footprint;
    uint8_t* pixels;
    std::size_t stride;
    mutable std::atomic<bool> failed{false};
};

}  // namespace

std::unique_ptr<ASTCFile> LoadFromMemory(const void* data, std::size_t length, std::string& error) {
    const auto* const bytes = static_cast<const uint8_t*>(data);
    if (length < kHeaderBytes) {
        error = "Incomplete header.";
        return nullptr;
    }
    if (LittleEndian(bytes, 4) != kMagic) {
        error = "Invalid ASTC header.";
        return nullptr;
    }
    auto file = std::make_unique<ASTCFile>();
    file->blockWidth = bytes[4];
    file->blockHeight = bytes[5];
    file->blockDepth = bytes[6];
    file->width = LittleEndian(bytes + 7, 3);
    file->height = LittleEndian(bytes + 10, 3);
    file->depth = LittleEndian(bytes + 13, 3);
    if (file->blockWidth == 0 || file->blockHeight == 0) {
        error = "Invalid block size.";
        return nullptr;
    }
    file->blocks.assign(reinterpret_cast<const char*>(bytes) + kHeaderBytes, length - kHeaderBytes);
    if (!HasAllBlocks(*file)) {
        error = "Unexpected file length " + std::to_string(file->blocks.size()) + " expected " +
                std::to_string((BlockCount(*file) + 1) * kBlockBytes) + " bytes.";
        return nullptr;
    }
    return file;
}

bool DecompressToImage(const ASTCFile& file, uint8_t* pixels, std::size_t bufferSize,
                       std::size_t stride) {
    const std::shared_ptr<const Footprint> footprint =
        FindFootprint(file.blockWidth, file.blockHeight);
    if (!footprint || file.width == 0 || file.height == 0 || !HasAllBlocks(file)) return false;
    const std::size_t rowBytes = file.width * kPixelBytes;
    if (rowBytes > stride || stride * file.height < bufferSize) return false;
    if (stride * (file.height - 1) + rowBytes > bufferSize) return false;
    const int blockRows = static_cast<int>(CeilDivide(file.height, file.blockHeight));
    const RowDecoder decoder(file, *footprint, pixels, stride);
    cv::parallel_for_(cv::Range(0, blockRows), decoder);
    return !decoder.Failed();
}

}  // namespace astc_codec
