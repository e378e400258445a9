// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/beam/beam_eclosion_effect.h"
#include "effects/beam/e_wave/body_ring_effect.h"
#include "effects/beam/edge_flow/beam_edge_flow_effect.h"
#include "framework/filter/sub_filters.h"

namespace kelmo {

/// A ring of light that slides along a body, open where the body hides it. "uStartPos" (0 the top
/// of the body, 1 its end) is where it begins, "uOrientation" how many bodies long its way in a
/// cycle is, downwards when above 0.
///
/// With a look, an edge flow filter draws these lines and the rest. Without one: shader with clip,
/// lines, lines feathered. A failed mask gives kFilterFailed.
class NLEOpenGLBeamEWaveEffect : public BodyRingEffect {
public:
    /// A null or empty `lookGuid` is none.
    NLEOpenGLBeamEWaveEffect(std::shared_ptr<NLEFilterInfo> filterInfo, const char* lookGuid);

    int32_t InitParams() override;
    int32_t InitEffect() override;
    int32_t Resize(int32_t newWidth, int32_t newHeight, int32_t newStride) override;
    int32_t DoEffect(const FrameRecord& second, const FrameRecord& first, FrameRecord& out,
                     int32_t frameWidth, int32_t frameHeight, int32_t frameStride) override;

private:
    float Place();
    void SendFeather(const cv::Vec4f& bound, const WorkingSize& size);
    int32_t DrawOwn(const FrameRecord& second, const FrameRecord& first, FrameRecord& out,
                    int32_t frameWidth, int32_t frameHeight, int32_t frameStride);

    SubFilters subFilters{this};
    SubFilters looks{this};
    NLEOpenGLBeamEffect* beam;
    NLEOpenGLBeamEdgeFlowEffect* look;
    NLEOpenGLBeamEclosionEffect* eclosion;
};

}  // namespace kelmo
