// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/beam/beam_eclosion_effect.h"
#include "framework/filter/sub_filters.h"

namespace kelmo {

/// Sand in two layers, the second one two seconds off the first, carried off by the wind from what
/// is not black in the clip.
///
/// Every parameter goes to both layers ("uCount", "TextIsUpdate" and those of their shader) and to
/// the shader; "uEclosion" is the feathering of the first layer, too. Slots: the clip, the two
/// layers, the feathered first layer, then material. "TextIsUpdate" is set back to 0 when the
/// layers have it.
class NLEOpenGLSandStormEffect : public NLEOpenGLFilter {
public:
    explicit NLEOpenGLSandStormEffect(std::shared_ptr<NLEFilterInfo> filterInfo);

    int32_t InitEffect() override;
    int32_t Resize(int32_t newWidth, int32_t newHeight, int32_t newStride) override;
    int32_t InitParams() override;
    int32_t DoEffect(const FrameRecord& second, const FrameRecord& first, FrameRecord& out,
                     int32_t frameWidth, int32_t frameHeight, int32_t frameStride) override;

private:
    void HandOver();

    SubFilters layers{this};
    SubFilters feathers{this};
    NLEOpenGLFilter* layerA;
    NLEOpenGLFilter* layerB;
    NLEOpenGLBeamEclosionEffect* eclosion;
};

}  // namespace kelmo
