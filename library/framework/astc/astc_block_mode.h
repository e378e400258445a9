// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace astc_codec {

/// Layout of a block's weights, told by its lowest 11 bits.
struct BlockMode {
    uint8_t gridWidth = 0;
    uint8_t gridHeight = 0;
    /// Of both planes together.
    uint8_t weightCount = 0;
    uint8_t weightBits = 0;
    /// Index of the weight range.
    uint8_t weightRange = 0;
    bool dualPlane = false;
    /// False for reserved modes and for those with too many weights or bits, or too few bits.
    bool legal = false;
};

/// `bits` is below 2048. Constant-colour blocks are told apart before.
const BlockMode& BlockModeOf(uint32_t bits);

}  // namespace astc_codec
