// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>

#include "framework/astc/astc_endpoints.h"
#include "framework/astc/astc_footprint.h"

namespace astc_codec {

/// Weight of 0..64 for each texel of a block.
using TexelWeights = std::array<uint8_t, kMaxBlockTexels + kTexelPadding>;

/// A block that is ready to be painted. Borrows everything.
struct PaintJob {
    int texels = 0;
    const Endpoints* endpoints = nullptr;
    int partitions = 1;
    /// Partition of each texel; null with a single one.
    const uint8_t* partitionMap = nullptr;
    const TexelWeights* weights = nullptr;
    /// Weights of one channel; null with a single plane.
    const TexelWeights* secondWeights = nullptr;
    int secondPlaneChannel = 0;
};

/// Blends the endpoints of each texel by its weight into R, G, B, A bytes. `pixels` has room for
/// the texels rounded up to four, and is aligned to 16 bytes.
void Paint(const PaintJob& job, uint8_t* pixels);

/// The blend of one channel as the format defines it: endpoints doubled to 16 bits, mixed in 64
/// steps, rounded to 8 bits.
constexpr uint8_t BlendChannel(int first, int second, int weight) {
    const int mixed = (first * 257 * (64 - weight) + second * 257 * weight + 32) / 64;
    return static_cast<uint8_t>((mixed * 255 + 32767) / 65536);
}

}  // namespace astc_codec
