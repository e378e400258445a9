// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "framework/filter/nle_opengl_filter.h"
#include "framework/filter/sub_filters.h"

namespace kelmo {

/// The clip breaks into particles of its own colours; alone or in front of the second clip.
///
/// Parameters: "duration" (float, seconds, 2), "particleSize" (float, 10) and "particleAmount"
/// (int, 5); the stage that draws the particles has them as "uDuration", "uParticleSize" and
/// "uParticleAmount". Slots: the clip, the second clip, and always in slot 2 the particles.
class NLEOpenGLParticleDissolve : public NLEOpenGLFilter {
public:
    explicit NLEOpenGLParticleDissolve(std::shared_ptr<NLEFilterInfo> filterInfo);

    int32_t InitEffect() override;
    int32_t Resize(int32_t newWidth, int32_t newHeight, int32_t newStride) override;
    int32_t InitParams() override;
    int32_t DoEffect(const FrameRecord& second, const FrameRecord& first, FrameRecord& out,
                     int32_t frameWidth, int32_t frameHeight, int32_t frameStride) override;

private:
    SubFilters stages{this};
    NLEOpenGLFilter* particles;
};

}  // namespace kelmo
