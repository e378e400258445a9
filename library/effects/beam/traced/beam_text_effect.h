// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <opencv2/core.hpp>

#include "effects/beam/edge_flow/beam_edge_flow_effect.h"
#include "effects/beam/traced/text_arcs.h"

namespace kelmo {

/// Five arcs of light that swing across a text. Shader: clip, lines, lines feathered, the material,
/// and behind it the text feathered by "uEclosion".
class NLEOpenGLBeamTextEffect : public NLEOpenGLBeamEdgeFlowEffect {
public:
    explicit NLEOpenGLBeamTextEffect(std::shared_ptr<NLEFilterInfo> filterInfo);

    int32_t InitEffect() override;
    int32_t Resize(int32_t newWidth, int32_t newHeight, int32_t newStride) override;
    void CalMaskBeamParam(cv::Rect* result, NLEOpenGLBeamEffect* lines, cv::Mat* picture,
                          bool isHuman, float segment) override;
    void UpdateBeamProgress(NLEOpenGLBeamEffect* lines, bool loop, int32_t cycle) override;
    void PrepareDraw(int32_t textureUnit, const FrameRecord& source, int32_t frameWidth,
                     int32_t frameHeight, int32_t frameStride) override;

private:
    void SendFeather(const cv::Rect& box, const cv::Size& size);

    SubFilters textFeathers{this};
    NLEOpenGLBeamEclosionEffect* textEclosion;
    /// Where each arc lies, for the life of the effect.
    std::array<float, kTextArcs> phases;
    cv::Mat binary;
};

}  // namespace kelmo
