// SPDX-License-Identifier: GPL-3.0-or-later
#include "framework/astc/astc_block_mode.h"

#include <array>

#include "framework/astc/astc_quantization.h"

namespace astc_codec {

namespace {

constexpr int kModes = 2048;
constexpr int kMaxWeights = 64;
constexpr int kMinWeightBits = 24;
constexpr int kMaxWeightBits = 96;

struct Grid {
    unsigned width = 0;
    unsigned height = 0;
    /// The high-precision and dual-plane bits give up their place for the size of the grid.
    bool plain = false;
};

/// Grid of a mode whose two lowest bits are not both 0.
Grid GridOfLowModes(unsigned bits) {
    const unsigned a = (bits >> 5) & 3U;
    const unsigned b = (bits >> 7) & 3U;
    switch ((bits >> 2) & 3U) {
        case 0:
            return {b + 4, a + 2};
        case 1:
            return {b + 8, a + 2};
        case 2:
            return {a + 2, b + 8};
        default:
            break;
    }
    return (b & 2U) == 0 ? Grid{a + 2, (b & 1U) + 6} : Grid{(b & 1U) + 2, a + 2};
}

Grid GridOfHighModes(unsigned bits) {
    const unsigned a = (bits >> 5) & 3U;
    switch ((bits >> 7) & 3U) {
        case 0:
            return {12, a + 2};
        case 1:
            return {a + 2, 12};
        case 2:
            return {a + 6, ((bits >> 9) & 3U) + 6, true};
        default:
            break;
    }
    if (a == 0) return {6, 10};
    return a == 1 ? Grid{10, 6} : Grid{};
}

BlockMode ReadMode(unsigned bits) {
    const bool low = (bits & 3U) != 0;
    if (!low && (bits & 15U) == 0) return {};
    const Grid grid = low ? GridOfLowModes(bits) : GridOfHighModes(bits);
    if (grid.width == 0) return {};
    const unsigned upper = low ? bits & 3U : (bits >> 2) & 3U;
    // A number of three bits: two stand at the low end of the mode, the lowest is bit 4.
    const unsigned range = (upper << 1) | ((bits >> 4) & 1U);
    const bool precise = !grid.plain && ((bits >> 9) & 1U) != 0;
    BlockMode mode;
    mode.dualPlane = !grid.plain && ((bits >> 10) & 1U) != 0;
    mode.gridWidth = static_cast<uint8_t>(grid.width);
    mode.gridHeight = static_cast<uint8_t>(grid.height);
    mode.weightRange = static_cast<uint8_t>(range - 2 + (precise ? 6 : 0));
    const int weights = static_cast<int>(grid.width * grid.height) * (mode.dualPlane ? 2 : 1);
    if (weights > kMaxWeights) return mode;
    const int weightBits = WeightRange(mode.weightRange).SequenceBits(weights);
    mode.weightCount = static_cast<uint8_t>(weights);
    mode.weightBits = static_cast<uint8_t>(weightBits);
    mode.legal = weightBits >= kMinWeightBits && weightBits <= kMaxWeightBits;
    return mode;
}

std::array<BlockMode, kModes> BuildModes() {
    std::array<BlockMode, kModes> modes;
    for (unsigned bits = 0; bits < kModes; ++bits) modes[bits] = ReadMode(bits);
    return modes;
}

}  // namespace

const BlockMode& BlockModeOf(uint32_t bits) {
    static const std::array<BlockMode, kModes> modes = BuildModes();
    return modes[bits];
}

}  // namespace astc_codec
