// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <memory>
#include <opencv2/core.hpp>

#include "effects/beam/edge_flow/beam_edge_flow_effect.h"
#include "framework/engine/color_uniform.h"
#include "framework/filter/nle_opengl_combine_filter.h"
#include "framework/filter/sub_filters.h"
#include "framework/shared/feedback_trail.h"

namespace kelmo {

/// The light of an edge flow that leaves a fading trail.
///
/// Each tick (25 a second, whatever the frame rate) the shader draws the trail anew from the trail
/// before, "uAccum" 1; the picture is drawn from it with "uAccum" 0. "uAccumBG" counts the ticks of
/// the trail, "uTicks" those since it was drawn last. A jump of 6 ticks, a new size or a restart
/// begins a new trail. "mirror" 1 keeps a second trail, whose "motion_x" is the opposite.
///
/// Parameters go to the edge flow and to the shader by their names. Shader while the trail is
/// drawn: clip, light, trail before; then: clip, light, trail, the second one if there is one, and
/// the edge flow's mask. A failed frame gives kFilterFailed and is not part of the trail's time.
class NLEOpenGLBeamEdgeFlowAfterimageEffect : public NLEOpenGLCombineFilter {
public:
    /// `edgeFlowGuid` chooses the look of the light.
    NLEOpenGLBeamEdgeFlowAfterimageEffect(std::shared_ptr<NLEFilterInfo> filterInfo,
                                          const char* edgeFlowGuid);

    int32_t InitParams() override;
    int32_t InitEffect() override;
    int32_t Resize(int32_t newWidth, int32_t newHeight, int32_t newStride) override;
    int32_t DoEffect(const FrameRecord& second, const FrameRecord& first, FrameRecord& out,
                     int32_t frameWidth, int32_t frameHeight, int32_t frameStride) override;

private:
    /// The position in whole ticks.
    int32_t Tick() const;
    void SendColor();
    void BindTarget(int32_t slot, int32_t index, int32_t frameWidth, int32_t frameHeight,
                    int32_t frameStride);
    /// Draws one trail into its target from what stood there, or from nothing.
    bool DrawTrail(int32_t slot, int32_t index, bool restart, int32_t frameWidth,
                   int32_t frameHeight, int32_t frameStride);

    SubFilters stages{this};
    NLEOpenGLBeamEdgeFlowEffect* edgeFlow;
    ColorUniform color{"color"};
    cv::Mat resetFrame = cv::Mat::zeros(4, 4, CV_8UC4);
    FeedbackTrail trail;
    int32_t accumFrames = 0;
};

}  // namespace kelmo
