// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <cmath>

namespace kelmo::host {

// A part of a picture, in pixels.
struct Rectangle {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
};

// Where a picture lies in a frame that it is fitted into: in the middle, in its shape.
inline Rectangle FittedInto(int frameWidth, int frameHeight, int pictureWidth, int pictureHeight) {
    const double scale = std::min(static_cast<double>(frameWidth) / pictureWidth,
                                  static_cast<double>(frameHeight) / pictureHeight);
    const auto side = [scale](int length, int most) {
        return std::clamp(static_cast<int>(std::lround(length * scale)), 1, most);
    };
    const int width = side(pictureWidth, frameWidth);
    const int height = side(pictureHeight, frameHeight);
    return {(frameWidth - width) / 2, (frameHeight - height) / 2, width, height};
}

}  // namespace kelmo::host
