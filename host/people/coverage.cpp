// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/people/coverage.h"

#include <cstdint>
#include <cstring>

namespace kelmo::host {

namespace {

/// Weights of blue, green and red in the brightness of BT.601, in 256ths.
constexpr int kBlue = 29;
constexpr int kGreen = 150;
constexpr int kRed = 77;

}  // namespace

CoverageChannel ChooseCoverage(const Picture& picture) {
    for (size_t i = 3; i < picture.pixels.size(); i += 4) {
        if (picture.pixels[i] != 255) return CoverageChannel::kAlpha;
    }
    return CoverageChannel::kLuma;
}

void TurnIntoCoverage(Picture& picture, CoverageChannel channel) {
    uint8_t* pixel = picture.pixels.data();
    uint8_t* const end = pixel + picture.pixels.size();
    for (; pixel != end; pixel += 4) {
        const int luma = (kBlue * pixel[0] + kGreen * pixel[1] + kRed * pixel[2] + 128) >> 8;
        std::memset(pixel, channel == CoverageChannel::kAlpha ? pixel[3] : luma, 4);
    }
}

}  // namespace kelmo::host
