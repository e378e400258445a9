// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <opencv2/core.hpp>
#include <vector>

#include "effects/beam/edge_flow/beam_edge_flow_effect.h"
#include "effects/beam/lightning/wave_bars.h"

namespace kelmo {

/// Wavy bars of lightning that rise through each person. "duration" (thousands of ticks) is the
/// time of one way up, "isMutiHuman" 1 gives each person bars of their own.
class NLEOpenGLBeamBodyWaveLightningEffect : public NLEOpenGLBeamEdgeFlowEffect {
public:
    explicit NLEOpenGLBeamBodyWaveLightningEffect(std::shared_ptr<NLEFilterInfo> filterInfo);

    void CalMaskBeamParam(cv::Rect* result, NLEOpenGLBeamEffect* lines, cv::Mat* picture,
                          bool isHuman, float segment) override;
    void UpdateBeamProgress(NLEOpenGLBeamEffect* lines, bool loop, int32_t cycle) override;

private:
    void FindBoxes(cv::Mat& picture);

    /// Where each bar lies, for the life of the effect.
    std::array<float, kWaveBars> phases;
    cv::Mat binary;
    cv::Mat framed;
    std::vector<std::vector<cv::Point>> contours;
    std::vector<cv::Rect> boxes;
};

}  // namespace kelmo
