// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>

#include "effects/beam/beam_eclosion_effect.h"
#include "effects/beam/lines/beam_effect.h"
#include "framework/filter/sub_filters.h"

namespace kelmo {

/// A ring of light with noise on a card that is tilted in space; drawn at 256 x 256, whatever the
/// frame.
///
/// Parameters: "roll", "yaw", "pitch" (degrees), "scale" (1, half of the card's side in device
/// space of the shorter side), "shifting" (along the card's normal), "center_x", "center_y" (device
/// space). Every parameter goes to lines, feather and noise, too. Shader: attributes "position" (3)
/// and "texcoord" (2) of the card; the feathered ring in slot 0, the noise in slot 1.
class NLEOpenGLBeamShapeNoiseEffect : public NLEOpenGLFilter {
public:
    explicit NLEOpenGLBeamShapeNoiseEffect(std::shared_ptr<NLEFilterInfo> filterInfo);

    int32_t InitEffect() override;
    int32_t Resize(int32_t newWidth, int32_t newHeight, int32_t newStride) override;
    int32_t InitParams() override;
    int32_t DoEffect(const FrameRecord& second, const FrameRecord& first, FrameRecord& out,
                     int32_t frameWidth, int32_t frameHeight, int32_t frameStride) override;

private:
    void PlaceCard(int32_t frameWidth, int32_t frameHeight);
    void DrawRing(int32_t& slot);

    SubFilters stages{this};
    NLEOpenGLBeamEffect* beam;
    NLEOpenGLBeamEclosionEffect* eclosion;
    NLEOpenGLFilter* noise;
    std::array<float, 18> card{};
};

}  // namespace kelmo
