// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "bindings/ai_filter_handle.h"
#include "framework/engine/color_uniform.h"
#include "framework/filter/nle_opengl_combine_filter.h"
#include "framework/filter/sub_filters.h"

namespace kelmo {

/// The shape of a person leaves a trail that the shader paints behind them. Slots: the clip; the
/// trail, with "mirror" 1 the mirrored trail, and the present shape, from the accumulation; the
/// person mask; the material. Without the accumulation its slots are left out. The trail is white,
/// so that its alpha tells its age; with "randomColor" each picture of it has a colour of its own.
///
/// Parameters go to the shader and to the accumulation. "color", "color1": as colour uniforms;
/// "randomColor" 1: the colour is dimmed at random on each frame, the same for the same frame;
/// "MaskRatio": once it is there, the mask is no longer thinned by a few pixels; "randomShadow" 1:
/// "uShadow" swings between plus and minus "shadow_x" twice in ten frames.
/// Uniforms: "uTime" in ticks. A failed mask gives kFilterFailed.
class NLEOpenGLBackGroundAfterimageEffect : public NLEOpenGLCombineFilter {
public:
    explicit NLEOpenGLBackGroundAfterimageEffect(std::shared_ptr<NLEFilterInfo> filterInfo);

    /// For an owner that wants the mask as it is.
    void KeepMask() { erodeMask = false; }
    /// The mask of the last frame, borrowed.
    const FrameRecord& MaskFrame() const { return maskFrame; }

    int32_t InitParams() override;
    int32_t InitEffect() override;
    int32_t Resize(int32_t newWidth, int32_t newHeight, int32_t newStride) override;
    int32_t DoEffect(const FrameRecord& second, const FrameRecord& first, FrameRecord& out,
                     int32_t frameWidth, int32_t frameHeight, int32_t frameStride) override;

private:
    bool ChooseColors();
    void Accumulate(const FrameRecord& second, bool random, int32_t frameWidth, int32_t frameHeight,
                    int32_t frameStride);
    void BindTrails(int32_t& slot, int32_t frameWidth, int32_t frameHeight, int32_t frameStride);
    void SendShadow();
    void ThinMask();

    AIFilterHandle aiHandle{kAIMaskFilter};
    SubFilters stages{this};
    NLEOpenGLFilter* accumFilter;
    ColorUniform color{"color"};
    ColorUniform color1{"color1"};
    cv::Mat maskMat;
    FrameRecord maskFrame;
    bool erodeMask = true;
    bool mirrored = false;
    int32_t colorValue = 0x39FF14;
};

}  // namespace kelmo
