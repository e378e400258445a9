// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <opencv2/core.hpp>

namespace kelmo {

/// Grey levels of an 8-bit picture, 0..255.
struct HighlightLevels {
    /// At most 0.05 percent of the pixels lie above this one.
    int32_t threshold = 0;
    /// The brightest one that occurs; -1 for an empty picture.
    int32_t brightest = -1;
};
HighlightLevels MeasureHighlights(const cv::Mat& gray);

/// Finds the bright highlights of a picture: the brightest 0.05 percent of its pixels, grown
/// together to spots, without those that are too large to be a highlight or too near to another.
class StarAnalysis {
public:
    /// Size of the shader's array.
    static constexpr int32_t kMostStars = 50;
    static constexpr int32_t kFloats = 4;

    /// Measures a picture of 4 channels of 8 bits. `density` 30..100: the higher, the nearer two
    /// stars may be. False, with the stars as they were, when the picture has no highlights or
    /// cannot be searched.
    bool Run(const cv::Mat& bgra, float density);

    /// Stars in use.
    int32_t Count() const { return starCount; }
    /// x, y as fractions of the frame with y down, brightness 0..1, one word that nothing writes;
    /// for 50 stars, of which `Count()` are in use.
    const float* Positions() const { return &positions[0][0]; }

private:
    int32_t CollectSpots(const HighlightLevels& levels);
    void DropNeighbours(float radius);

    std::array<std::array<float, kFloats>, kMostStars> positions{};
    int32_t starCount = 0;
    // Pictures kept for their memory.
    cv::Mat gray;
    cv::Mat mask;
};

}  // namespace kelmo
