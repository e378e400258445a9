// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace astc_codec::test {

/// Packs a block field by field, the way an encoder does. Knows nothing of the decoder: what is
/// laid down here is what the format says, so that a decoder's slip shows.
class BlockWriter {
public:
    /// `count` bits of `value`, its lowest bit at bit `position` of the block.
    BlockWriter& Put(unsigned position, unsigned count, uint64_t value) {
        for (unsigned i = 0; i < count; ++i) SetBit(position + i, ((value >> i) & 1U) != 0);
        return *this;
    }
    /// Single bits of weight data: stream bit i stands at bit 127 - i.
    BlockWriter& PutWeightBits(unsigned streamPosition, unsigned count, uint64_t value) {
        for (unsigned i = 0; i < count; ++i) {
            SetBit(127 - (streamPosition + i), ((value >> i) & 1U) != 0);
        }
        return *this;
    }
    /// Weights of a range without trits and quints.
    BlockWriter& PutWeights(unsigned bitsEach, const std::vector<unsigned>& weights) {
        unsigned position = 0;
        for (const unsigned weight : weights) {
            PutWeightBits(position, bitsEach, weight);
            position += bitsEach;
        }
        return *this;
    }

    const std::array<uint8_t, 16>& Bytes() const { return bytes; }

private:
    void SetBit(unsigned position, bool on) {
        const auto mask = static_cast<uint8_t>(1U << (position % 8));
        uint8_t& byte = bytes[position / 8];
        byte = on ? static_cast<uint8_t>(byte | mask) : static_cast<uint8_t>(byte & ~mask);
    }

    std::array<uint8_t, 16> bytes{};
};

/// A block of 4 x 4 texels with one partition, a full grid of 2-bit weights (0, 21, 43, 64), and
/// colours of 256 levels: the plainest block there is.
inline BlockWriter PlainBlock(unsigned endpointMode, const std::vector<unsigned>& colors,
                              const std::vector<unsigned>& weights) {
    // Mode: grid 4 x 4 (b8..b7 = 0, b6..b5 = 2, b3..b2 = 0), range of 4 levels (R = 4).
    BlockWriter block;
    block.Put(0, 11, 0x42).Put(11, 2, 0).Put(13, 4, endpointMode);
    for (std::size_t i = 0; i < colors.size(); ++i) {
        block.Put(17 + static_cast<unsigned>(i) * 8, 8, colors[i]);
    }
    return block.PutWeights(2, weights);
}

/// The bytes of a file: header and blocks.
inline std::string FileOf(unsigned blockWidth, unsigned blockHeight, unsigned width,
                          unsigned height, const std::string& blocks) {
    std::string file("\x13\xAB\xA1\x5C", 4);
    file += static_cast<char>(blockWidth);
    file += static_cast<char>(blockHeight);
    file += '\1';
    for (const unsigned size : {width, height, 1U}) {
        for (unsigned shift = 0; shift < 24; shift += 8) file += static_cast<char>(size >> shift);
    }
    return file + blocks;
}

inline std::string TextOf(const std::array<uint8_t, 16>& bytes) {
    return std::string(bytes.begin(), bytes.end());
}

}  // namespace astc_codec::test
