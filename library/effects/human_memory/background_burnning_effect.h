// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/beam/beam_eclosion_effect.h"
#include "effects/human_memory/background_afterimage_effect.h"

namespace kelmo {

/// A feathered afterimage that burns behind a person. Slots: the clip, the second clip if there is
/// one, the feathered afterimage without the clip, the person mask as it is, the material.
///
/// Parameters go to the shader and to the afterimage; "uEclosion" to the feathering. Uniforms:
/// "uTime" in ticks. Without its afterimage the result is 1.
class NLEOpenGLBackGroundBurnningEffect : public NLEOpenGLCombineFilter {
public:
    explicit NLEOpenGLBackGroundBurnningEffect(std::shared_ptr<NLEFilterInfo> filterInfo);

    int32_t InitParams() override;
    int32_t InitEffect() override;
    int32_t Resize(int32_t newWidth, int32_t newHeight, int32_t newStride) override;
    int32_t DoEffect(const FrameRecord& second, const FrameRecord& first, FrameRecord& out,
                     int32_t frameWidth, int32_t frameHeight, int32_t frameStride) override;

private:
    void PrepareFeathering(int32_t frameWidth, int32_t frameHeight);

    SubFilters stages{this};
    NLEOpenGLBackGroundAfterimageEffect* afterimageFilter;
    NLEOpenGLBeamEclosionEffect* eclosionFilter;
};

}  // namespace kelmo
