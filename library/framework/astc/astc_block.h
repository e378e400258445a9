// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "framework/astc/astc_footprint.h"

namespace astc_codec {

inline constexpr int kBlockBytes = 16;

/// Decodes a block of 16 bytes to Texels() pixels of R, G, B, A, row by row from the top. `pixels`
/// has room for kMaxBlockTexels + kTexelPadding of them, and is aligned to 16 bytes.
///
/// False for a block that the format calls illegal, and for one with an endpoint mode of high
/// dynamic range: 8 bits cannot hold it, and a texture that is visibly missing is better than one
/// in wrong colours. A constant-colour block gives the upper 8 bits of its components, whether it
/// is marked as high range or not.
bool DecodeBlock(const uint8_t* block, const Footprint& footprint, uint8_t* pixels);

}  // namespace astc_codec
