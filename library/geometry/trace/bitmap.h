// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <opencv2/core/mat.hpp>

namespace kelmo {

/// A borrowed one-channel picture as the tracer sees it: value 0 is ink, every other value is
/// empty.
///
/// Rows are packed (row step equals `width`). The buffer stays its owner's and must outlive the
/// object.
class Bitmap {
public:
    Bitmap() = default;
    Bitmap(int32_t columns, int32_t rows, uint8_t* pixels)
        : width(columns), height(rows), size(columns * rows), data(pixels) {}
    /// Over a continuous 8-bit one-channel picture.
    explicit Bitmap(cv::Mat& picture) : Bitmap(picture.cols, picture.rows, picture.data) {
        CV_Assert(picture.type() == CV_8UC1 && (picture.empty() || picture.isContinuous()));
    }
    virtual ~Bitmap() = default;

    /// True for ink; everything outside of the picture is empty.
    bool at(int32_t x, int32_t y) const {
        return x >= 0 && x < width && y >= 0 && y < height && data[Index(x, y)] == 0;
    }
    /// Exchanges ink and empty. (x, y) must lie inside.
    void flip(int32_t x, int32_t y) { data[Index(x, y)] = at(x, y) ? 255 : 0; }
    /// `flip` for the pixels from `x` up to, but not including, `endX` of row `y`; what lies
    /// outside of the picture is left out.
    void FlipRow(int32_t x, int32_t endX, int32_t y);

    int32_t width = 0;
    int32_t height = 0;
    int32_t size = 0;  ///< width * height
    uint8_t* data = nullptr;

private:
    size_t Index(int32_t x, int32_t y) const { return static_cast<size_t>(y) * width + x; }
};

}  // namespace kelmo
