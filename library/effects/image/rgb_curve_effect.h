// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "framework/filter/nle_opengl_combine_filter.h"
#include "framework/filter/sub_filters.h"

namespace kelmo {

/// Tone curves for red, green, blue and all three.
///
/// Parameters: the twelve texts of rgb_curve_params.h, each a JSON array of points (curve_point.h).
/// A frame fails (1) when a knot text is empty, or a curve has fewer than 2 or more than 25 knots.
/// Inputs of the shader: the clip, the second clip when there is one, the textures of the
/// description, then the four strips of the sub-filter.
class NLEOpenglRGBCurveEffect : public NLEOpenGLCombineFilter {
public:
    explicit NLEOpenglRGBCurveEffect(std::shared_ptr<NLEFilterInfo> filterInfo);

    int32_t InitEffect() override;
    int32_t CreateEffect(int32_t newWidth, int32_t newHeight, int32_t newStride) override;
    int32_t DoEffect(const FrameRecord& second, const FrameRecord& first, FrameRecord& out,
                     int32_t frameWidth, int32_t frameHeight, int32_t frameStride) override;

private:
    /// False when a knot text is missing or empty.
    bool HandOverCurves();

    SubFilters subFilters{this};
    NLEOpenGLFilter* lookTable;
};

}  // namespace kelmo
