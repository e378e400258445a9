// SPDX-License-Identifier: GPL-3.0-or-later
#include "geometry/bitmap.h"

#include <algorithm>

namespace kelmo {

void Bitmap::FlipRow(int32_t x, int32_t endX, int32_t y) {
    if (y < 0 || y >= height) {
        return;
    }
    x = std::max(x, 0);
    endX = std::min(endX, width);
    uint8_t* row = data + Index(0, y);
    for (int32_t i = x; i < endX; ++i) {
        row[i] = row[i] == 0 ? 255 : 0;
    }
}

}  // namespace kelmo
