// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/human_memory/memory_clock.h"
#include "framework/engine/color_uniform.h"
#include "framework/filter/nle_opengl_filter.h"

namespace kelmo {

/// A trail that fades: each picture of the first frame is laid over what is left of those before. A
/// stage of others, which take its pictures: target 0 the trail, target 1 a second one that moves
/// the other way ("mirror" 1), target 2 the present picture alone.
///
/// One picture a tick (1/25 s): a frame of the same tick draws nothing, with the result 0. A jump
/// of six ticks begins the trail afresh. `position` becomes the tick.
///
/// Parameters go to the shader; "color", "mirror" and "motion_x" are read here. Uniforms: "uAccum"
/// 0 (the present picture of slot 0) or 1 (slot 0 over the trail of slot 1), "uAccumBG" pictures
/// since the beginning, "uTicks" since the last one, "color_r", "color_g", "color_b".
class NLEOpenGLBackGroundAccumulationEffect : public NLEOpenGLFilter {
public:
    explicit NLEOpenGLBackGroundAccumulationEffect(std::shared_ptr<NLEFilterInfo> filterInfo);

    int32_t InitParams() override;
    int32_t DoEffect(const FrameRecord& second, const FrameRecord& first, FrameRecord& out,
                     int32_t frameWidth, int32_t frameHeight, int32_t frameStride) override;

private:
    int32_t DrawPresent(const FrameRecord& second, const FrameRecord& first, int32_t frameWidth,
                        int32_t frameHeight, int32_t frameStride);
    int32_t DrawMirrored(FrameRecord& out, int32_t frameWidth, int32_t frameHeight,
                         int32_t frameStride);
    void BindHistory(int32_t target, int32_t frameWidth, int32_t frameHeight, int32_t frameStride);

    ColorUniform color{"color"};
    cv::Mat blankFrame;
    MemoryClock clock;
    int32_t accumCount = 0;
};

}  // namespace kelmo
