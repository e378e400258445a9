// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <opencv2/core.hpp>
#include <vector>

#include "framework/filter/nle_opengl_filter.h"

namespace kelmo {

/// Where a picture has its strongest corners: at most one for each tile of a grid of 10 x 10, row
/// by row from the top, found by the FAST-9 test (Rosten and Drummond, 2006).
class StarPoints {
public:
    static constexpr int kTiles = 10;
    static constexpr int32_t kMost = kTiles * kTiles;

    /// `gray` is a picture of one byte a pixel; `amount` 0..100 (others count as the nearest): the
    /// more, the fainter a corner may be. Tiles without a pixel have no corner.
    void Detect(const cv::Mat& gray, int32_t amount);

    int32_t Count() const { return count; }
    /// kMost pairs: x and y as fractions of the picture, y up; zeros behind `Count()`.
    const float* Places() const { return &places[0][0]; }

private:
    std::array<std::array<float, 2>, kMost> places{};
    int32_t count = 0;
    std::vector<cv::KeyPoint> found;  ///< kept for its memory
};

/// Tells its shader where the strongest corners of the clip are, so that it draws twinkles there:
/// "posArray" (vec2, 100 places) and "starburstCount" (int).
///
/// Parameter "amount" (int, 0..100): how many corners there may be; none at 0. Material follows the
/// clip at 25 pictures a second.
class NLEOpenGLStarburstEffect : public NLEOpenGLFilter {
public:
    explicit NLEOpenGLStarburstEffect(std::shared_ptr<NLEFilterInfo> filterInfo);

    int32_t InitParams() override;
    int32_t DoEffect(const FrameRecord& second, const FrameRecord& first, FrameRecord& out,
                     int32_t frameWidth, int32_t frameHeight, int32_t frameStride) override;

private:
    StarPoints points;
    int32_t amount = 50;
    cv::Mat gray;
};

}  // namespace kelmo
