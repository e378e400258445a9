// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "bindings/ai_filter_handle.h"
#include "effects/human_memory/memory_clock.h"
#include "framework/engine/color_uniform.h"
#include "framework/filter/nle_opengl_combine_filter.h"

namespace kelmo {

/// Draws people at the working size and keeps the last nine of these pictures: targets 0 (the
/// oldest) to 8. A stage of the queue. Slots: the clip, the second clip if there is one, the grey
/// mask, the material.
///
/// One picture a tick (1/25 s), as the accumulation has it; after a jump of six ticks the whole
/// queue is filled with the present picture.
///
/// Parameters go to the shader; "color", "color1", "color2" as colour uniforms, the first dimmed at
/// random with "randomColor" 1 (the same for the same tick); "uEclosion" widens "uBound". Uniforms:
/// "uBound" left, top, right and bottom of the people in fractions of the picture, y down; "uTime"
/// in ticks; "uViewSizeWidth", "uViewSizeHeight" the working size. A failed mask gives
/// kFilterFailed.
class NLEOpenGLBackGroundQueueAccumEffect : public NLEOpenGLCombineFilter {
public:
    static constexpr int32_t kPictures = 9;

    explicit NLEOpenGLBackGroundQueueAccumEffect(std::shared_ptr<NLEFilterInfo> filterInfo);

    /// The grey mask of the last frame, at the working size.
    const cv::Mat& Mask() const { return maskMat; }

    int32_t InitParams() override;
    int32_t DoEffect(const FrameRecord& second, const FrameRecord& first, FrameRecord& out,
                     int32_t frameWidth, int32_t frameHeight, int32_t frameStride) override;

private:
    void SendBound();
    void SendColors();
    /// Room for one more picture at the end of the queue.
    int32_t MoveQueue(int32_t frameWidth, int32_t frameHeight, int32_t frameStride);

    AIFilterHandle aiHandle{kAIMaskFilter};
    ColorUniform color{"color"};
    ColorUniform color1{"color1"};
    ColorUniform color2{"color2"};
    cv::Mat maskMat;
    cv::Mat certain;
    FrameRecord maskFrame;
    MemoryClock clock;
};

}  // namespace kelmo
