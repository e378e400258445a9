// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace kelmo::host {

// One frame as the effects want it: BGRA, 8 bits a channel, premultiplied alpha, top row first.
// It owns its pixels; a value like any other. Give the same object again and again: the buffer is
// allocated once for a size and then reused.
struct Picture {
    // Vector code may read a little past the last pixel; the allocation covers it.
    static constexpr size_t kSlack = 64;

    int width = 0;   // pixels
    int height = 0;  // pixels
    int stride = 0;  // bytes from one row to the next; always width * 4
    std::vector<uint8_t> pixels;

    // Makes room for a picture of this size. The content is undefined afterwards.
    void Resize(int newWidth, int newHeight) {
        width = newWidth;
        height = newHeight;
        stride = newWidth * 4;
        const size_t bytes = static_cast<size_t>(stride) * static_cast<size_t>(newHeight);
        pixels.reserve(bytes + kSlack);
        pixels.resize(bytes);
    }

    uint8_t* Row(int y) { return pixels.data() + static_cast<size_t>(y) * stride; }
    const uint8_t* Row(int y) const { return pixels.data() + static_cast<size_t>(y) * stride; }
    bool Empty() const { return width <= 0 || height <= 0; }
};

}  // namespace kelmo::host
