// SPDX-License-Identifier: GPL-3.0-or-later
#include "ai/picture/picture_pyramid.h"

#include <algorithm>
#include <opencv2/imgproc.hpp>

namespace kelmo {

void PicturePyramid::Reset(const cv::Mat& bgra) {
    levels[0] = bgra;
    levelCount = 1;
}

const cv::Mat& PicturePyramid::Level(int index) {
    while (levelCount <= static_cast<size_t>(index)) {
        if (levels.size() <= levelCount) levels.emplace_back();
        const cv::Mat& finer = levels[levelCount - 1];
        // Even sizes alone are halved by the fast path; the scale stays exactly 2.
        const cv::Size half(finer.cols / 2, finer.rows / 2);
        cv::resize(finer(cv::Rect(0, 0, half.width * 2, half.height * 2)), levels[levelCount], half,
                   0, 0, cv::INTER_AREA);
        ++levelCount;
    }
    return levels[static_cast<size_t>(index)];
}

int PicturePyramid::LevelFor(float factor) {
    int level = 0;
    int shorter = std::min(Size().width, Size().height);
    for (; factor > 2.0f && shorter >= 4; factor /= 2, shorter /= 2) ++level;
    return level;
}

void PicturePyramid::Stretch(cv::Size size, cv::Mat& result) {
    const float factor = std::max(static_cast<float>(Size().width) / size.width,
                                  static_cast<float>(Size().height) / size.height);
    cv::resize(Level(LevelFor(factor)), result, size, 0, 0, cv::INTER_LINEAR);
}

void PicturePyramid::ToInput(const cv::Mat& bgra, ColourRange range, std::span<float> input) {
    const float scale = range == ColourRange::kZeroToOne ? 1.0f / 255 : 2.0f / 255;
    const float offset = range == ColourRange::kZeroToOne ? 0.0f : -1.0f;
    CV_Assert(bgra.type() == CV_8UC4 && input.size() == bgra.total() * 3);
    float* target = input.data();
    for (int y = 0; y < bgra.rows; ++y) {
        const uint8_t* source = bgra.ptr(y);
        for (int x = 0; x < bgra.cols; ++x, source += 4, target += 3) {
            target[0] = source[2] * scale + offset;
            target[1] = source[1] * scale + offset;
            target[2] = source[0] * scale + offset;
        }
    }
}

Letterbox PicturePyramid::Fit(int size, ColourRange range, std::span<float> input) {
    const int longer = std::max(Size().width, Size().height);
    Letterbox box;
    box.scale = static_cast<float>(size) / static_cast<float>(longer);
    const cv::Size inner(std::clamp(cvRound(Size().width * box.scale), 1, size),
                         std::clamp(cvRound(Size().height * box.scale), 1, size));
    box.place =
        cv::Rect((size - inner.width) / 2, (size - inner.height) / 2, inner.width, inner.height);
    box.offset = cv::Point2f(static_cast<float>(box.place.x), static_cast<float>(box.place.y));
    fitted.create(size, size, CV_8UC4);
    fitted.setTo(cv::Scalar::all(0));
    cv::Mat target = fitted(box.place);
    cv::resize(Level(LevelFor(1.0f / box.scale)), target, inner, 0, 0, cv::INTER_LINEAR);
    ToInput(fitted, range, input);
    return box;
}

void PicturePyramid::Crop(const RotatedSquare& square, int size, ColourRange range,
                          std::span<float> input) {
    const CropMapping mapping(square, size);
    const int level = LevelFor(mapping.Scale());
    const float shrink = 1.0f / static_cast<float>(1 << level);
    // Pixel centres lie at halves on both sides.
    const cv::Point2f origin = mapping.ToFrame(0.5f, 0.5f) * shrink - cv::Point2f(0.5f, 0.5f);
    const cv::Point2f right = mapping.ToFrame(1.5f, 0.5f) * shrink - cv::Point2f(0.5f, 0.5f);
    const cv::Point2f down = mapping.ToFrame(0.5f, 1.5f) * shrink - cv::Point2f(0.5f, 0.5f);
    const cv::Matx23d toLevel(right.x - origin.x, down.x - origin.x, origin.x, right.y - origin.y,
                              down.y - origin.y, origin.y);
    cv::warpAffine(Level(level), cropped, toLevel, cv::Size(size, size),
                   cv::INTER_LINEAR | cv::WARP_INVERSE_MAP, cv::BORDER_CONSTANT);
    ToInput(cropped, range, input);
}

}  // namespace kelmo
