// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "framework/filter/nle_opengl_filter.h"
#include "framework/filter/sub_filters.h"

namespace kelmo {

/// A blur of its own strength for each of red, green and blue, over a feathered picture.
///
/// Parameters, each sent only when present: "uEclosion" (width of the feather), "uEnhance",
/// "WholeBlurIntension", "RBlurIntension", "GBlurIntension", "BBlurIntension".
class NLEOpenGLColorBlurEffect : public NLEOpenGLFilter {
public:
    explicit NLEOpenGLColorBlurEffect(std::shared_ptr<NLEFilterInfo> filterInfo);

    int32_t InitEffect() override;
    /// The feather works at the reduced size, which is enough for a blur.
    int32_t Resize(int32_t newWidth, int32_t newHeight, int32_t newStride) override;
    int32_t DoEffect(const FrameRecord& second, const FrameRecord& first, FrameRecord& out,
                     int32_t frameWidth, int32_t frameHeight, int32_t frameStride) override;

private:
    SubFilters subFilters{this};
    NLEOpenGLFilter* eclosionFilter;
};

}  // namespace kelmo
