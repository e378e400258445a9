// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/beam/edge_flow/beam_edge_flow_effect.h"
#include "effects/beam/traced/ink_picture.h"

namespace kelmo {

/// Light along the traced outlines of whatever stands out in the picture: text, a logo, a shape.
/// Works at the size of the frame. Parameters "threshold" and "reverse" as `InkPicture` takes them.
class NLEOpenGLBeamBitmapTraceEffect : public NLEOpenGLBeamEdgeFlowEffect {
public:
    explicit NLEOpenGLBeamBitmapTraceEffect(std::shared_ptr<NLEFilterInfo> filterInfo);

    void CalMaskBeamParam(cv::Rect* result, NLEOpenGLBeamEffect* lines, cv::Mat* picture,
                          bool isHuman, float segment) override;
    void GetWorkSizes(int32_t frameWidth, int32_t frameHeight, cv::Size* maskSize,
                      cv::Size* beamSize, cv::Size* eclosionSize) override;

private:
    InkPicture finder;
    cv::Mat ink;
    cv::Mat work;
};

}  // namespace kelmo
