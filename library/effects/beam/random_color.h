// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "platform/random.h"

namespace kelmo {

/// The next three random numbers as red, green and blue: 0xRRGGBB.
inline int32_t DrawRandomColor() {
    const int32_t red = Rand() % 255;
    const int32_t green = Rand() % 255;
    const int32_t blue = Rand() % 255;
    return (red << 16) + (green << 8) + blue;
}

}  // namespace kelmo
