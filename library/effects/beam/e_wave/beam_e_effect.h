// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/beam/e_wave/body_ring_effect.h"
#include "framework/filter/sub_filters.h"

namespace kelmo {

/// A ring of light that rises along a body once a cycle, its height a fifth of the body's width.
///
/// Parameters go to the lines and to the shader by their names. Shader: clip, lines; "uBound" is
/// the ring with a margin for "uEclosion", fractions of the frame. A failed mask gives
/// kFilterFailed.
class NLEOpenGLBeamEEffect : public BodyRingEffect {
public:
    explicit NLEOpenGLBeamEEffect(std::shared_ptr<NLEFilterInfo> filterInfo);

    int32_t InitParams() override;
    int32_t InitEffect() override;
    int32_t Resize(int32_t newWidth, int32_t newHeight, int32_t newStride) override;
    int32_t DoEffect(const FrameRecord& second, const FrameRecord& first, FrameRecord& out,
                     int32_t frameWidth, int32_t frameHeight, int32_t frameStride) override;

private:
    SubFilters subFilters{this};
    NLEOpenGLBeamEffect* beam;
    int32_t boundMargin = 0;
};

}  // namespace kelmo
