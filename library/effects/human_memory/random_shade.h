// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "platform/random.h"

namespace kelmo {

/// A colour 0xRRGGBB with each of its parts, from red on, dimmed by a random number of its own.
inline int32_t RandomShade(int32_t rgb) {
    int32_t shade = 0;
    for (int32_t shift = 16; shift >= 0; shift -= 8) {
        const int32_t part = (rgb >> shift) & 0xFF;
        shade |= static_cast<int32_t>((Rand() % 255) * part / 255.0) << shift;
    }
    return shade;
}

}  // namespace kelmo
