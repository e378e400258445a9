// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <opencv2/core.hpp>
#include <span>
#include <vector>

#include "ai/picture/crop.h"

namespace kelmo {

/// Range that a network wants its colours in.
enum class ColourRange { kZeroToOne, kMinusOneToOne };

/// Where a frame lies in the square picture that it was fitted into.
struct Letterbox {
    float scale = 1.0f;
    cv::Point2f offset;
    cv::Rect place;  ///< whole pixels of the square that show the frame
    cv::Point2f ToFrame(float x, float y) const {
        return {(x - offset.x) / scale, (y - offset.y) / scale};
    }
};

/// One frame and its halves, made when somebody asks for them: the pictures that networks get are
/// cut from the level that is just finer than they are, which keeps noise and thin lines from
/// flickering and costs a tenth of averaging the whole frame. A view of the frame, which must stay
/// until the next `Reset`; the memory of the halves is reused. One thread.
class PicturePyramid {
public:
    /// `bgra`: 4 channels of 8 bits, top row first.
    void Reset(const cv::Mat& bgra);
    cv::Size Size() const { return levels[0].size(); }

    /// The whole frame stretched to `size`, 4 channels of 8 bits.
    void Stretch(cv::Size size, cv::Mat& result);
    /// The whole frame fitted into a square, black bars round it, as a network's input.
    Letterbox Fit(int size, ColourRange range, std::span<float> input);
    /// A turned square as a network's input; black outside the frame.
    void Crop(const RotatedSquare& square, int size, ColourRange range, std::span<float> input);

    /// Writes 4 channels of 8 bits, blue first, as red, green, blue floats.
    static void ToInput(const cv::Mat& bgra, ColourRange range, std::span<float> input);

private:
    /// The frame halved `index` times.
    const cv::Mat& Level(int index);
    /// How often to halve before a reduction by `factor`.
    int LevelFor(float factor);

    std::vector<cv::Mat> levels{1};
    size_t levelCount = 1;
    cv::Mat fitted;
    cv::Mat cropped;
};

}  // namespace kelmo
