// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "framework/engine/color_uniform.h"
#include "framework/filter/nle_opengl_filter.h"
#include "framework/filter/sub_filters.h"

namespace kelmo {

/// Outlines that people leave behind, over the clip; one look each for its descriptions. Every
/// parameter goes to the stage that gathers the outlines and to the shader; "color" as "color_r",
/// "color_g", "color_b", too. Shader: clip, gathered outlines.
class NLEOpenGLBeamMergeEffect : public NLEOpenGLFilter {
public:
    explicit NLEOpenGLBeamMergeEffect(std::shared_ptr<NLEFilterInfo> filterInfo);

    int32_t InitEffect() override;
    int32_t Resize(int32_t newWidth, int32_t newHeight, int32_t newStride) override;
    int32_t InitParams() override;
    int32_t DoEffect(const FrameRecord& second, const FrameRecord& first, FrameRecord& out,
                     int32_t frameWidth, int32_t frameHeight, int32_t frameStride) override;

private:
    SubFilters stages{this};
    NLEOpenGLFilter* accum;
    ColorUniform colorBytes{"color"};
};

}  // namespace kelmo
