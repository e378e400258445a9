// SPDX-License-Identifier: GPL-3.0-or-later
#include "geometry/trace/bitmap.h"

#include <algorithm>
#include <cstring>

namespace kelmo {

namespace {

void Invert(uint8_t* pixel, const uint8_t* end) {
    for (; pixel < end; ++pixel) {
        *pixel = *pixel == 0 ? 255 : 0;
    }
}

}  // namespace

void Bitmap::FlipRow(int32_t x, int32_t endX, int32_t y) {
    if (y < 0 || y >= height) {
        return;
    }
    x = std::max(x, 0);
    endX = std::min(endX, width);
    if (x >= endX) {
        return;
    }
    uint8_t* pixel = data + Index(x, y);
    uint8_t* const end = data + Index(endX, y);
    // Eight at a time where they are all ink or all 255, as most are.
    uint64_t eight = 0;
    for (; end - pixel >= 8; pixel += 8) {
        std::memcpy(&eight, pixel, sizeof(eight));
        if (eight == 0 || ~eight == 0) {
            eight = ~eight;
            std::memcpy(pixel, &eight, sizeof(eight));
        } else {
            Invert(pixel, pixel + 8);
        }
    }
    Invert(pixel, end);
}

}  // namespace kelmo
