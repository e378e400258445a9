// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <opencv2/core.hpp>

#include "bindings/ai_filter_handle.h"
#include "effects/beam/beam_eclosion_effect.h"
#include "effects/beam/lightning/body_bolts.h"
#include "effects/beam/lines/beam_effect.h"
#include "framework/engine/color_uniform.h"
#include "framework/filter/nle_opengl_combine_filter.h"
#include "framework/filter/sub_filters.h"

namespace kelmo {

/// Four bolts that flicker on and off on the people in the picture.
///
/// Parameters: "interval_flashing" and "interval_light" (ticks: a flash begins every so many and
/// shines for so many), "uRadius" and the zoom and alpha nodes of the line renderer, "uEclosion",
/// "color", "uEnhance". Shader: clip, bolts, bolts feathered in slots 0 to 2; "uBound" is the box
/// of the bolts' starts, fractions of the frame. A failed mask gives kFilterFailed.
///
/// Not seeded: a frame drawn twice has other bolts, and a seek into a flash shows the last places.
class NLEOpenGLBeamBodyLightningEffect : public NLEOpenGLCombineFilter {
public:
    explicit NLEOpenGLBeamBodyLightningEffect(std::shared_ptr<NLEFilterInfo> filterInfo);

    int32_t InitParams() override;
    int32_t InitEffect() override;
    int32_t Resize(int32_t newWidth, int32_t newHeight, int32_t newStride) override;
    int32_t DoEffect(const FrameRecord& second, const FrameRecord& first, FrameRecord& out,
                     int32_t frameWidth, int32_t frameHeight, int32_t frameStride) override;

private:
    bool FindBody(const FrameRecord& first, const WorkingSize& size);
    cv::Rect DrawBolts();
    void SendBound(const cv::Rect& box, const WorkingSize& size);
    void DrawStages(const FrameRecord& second, const FrameRecord& first, const WorkingSize& size,
                    int32_t frameWidth, int32_t frameHeight, int32_t frameStride);

    AIFilterHandle segmentation{kAIMaskFilter};
    SubFilters subFilters{this};
    NLEOpenGLBeamEffect* beam;
    NLEOpenGLBeamEclosionEffect* eclosion;
    ColorUniform colorBytes{"color"};
    BodyBolts bolts;
    cv::Mat scaledInput;
    cv::Mat maskMat;
    /// Where the body is: 0 or 250.
    cv::Mat body;
    int32_t eclosionRadius = 0;
};

}  // namespace kelmo
