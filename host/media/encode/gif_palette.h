// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <vector>

namespace kelmo::host {

// Private to this folder: brings a picture to 256 colours, for GIF. The palette is made for each
// picture by median cut (Heckbert, "Color image quantization for frame buffer display", 1982) over
// a histogram of 5 bits a channel; an ordered 8x8 pattern hides the steps and, unlike error
// diffusion, stands still from frame to frame.
class GifPalette {
public:
    static constexpr uint8_t kTransparentIndex = 255;

    // `bgra` is premultiplied. With `transparency`, pixels of less than half the opacity get
    // kTransparentIndex; without, the picture stands on black. Writes one index a pixel and 256
    // entries 0xAARRGGBB.
    void Quantize(const uint8_t* bgra, int stride, int width, int height, bool transparency,
                  uint8_t* indices, int indexStride, uint32_t* palette);

private:
    // The pixels of a cell and the sums of their red, green and blue.
    struct Cell {
        uint32_t pixels = 0;
        std::array<uint64_t, 3> sum{};
    };

    struct Box {
        int begin = 0, end = 0;  // range of `cells`
        int longest = 0;         // channel of the largest extent
        int64_t weight = 0;      // extent times pixels; the heaviest box is cut next
    };

    void CountColors(const uint8_t* bgra, int stride, int width, int height, bool transparency);
    void Measure(Box& box) const;
    void CutBoxes(int colors);
    int Nearest(int red, int green, int blue);

    std::vector<Cell> histogram;  // 32768 cells, 5 bits a channel
    std::vector<uint16_t> cells;  // the cells in use, sorted into boxes
    std::vector<Box> boxes;
    std::vector<std::array<int, 3>> colors;  // red, green, blue of each box
    std::vector<int16_t> nearest;            // cell -> colour, -1 unknown
};

}  // namespace kelmo::host
