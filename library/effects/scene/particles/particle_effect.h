// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/scene/particles/picture_particles.h"
#include "framework/filter/nle_opengl_filter.h"

namespace kelmo {

/// The clip as coloured particles, moved by the vertex shader; a stage of others. The picture is in
/// target 0 after a frame.
///
/// Parameter "uParticleAmount" (int, 5): draws in each cell of 10 x 10 pixels of the working size.
/// Attributes: "position" (2), "texcoord" (2), "color" (4), see PictureParticles. No inputs.
class NLEOpenGLParticleEffect : public NLEOpenGLFilter {
public:
    explicit NLEOpenGLParticleEffect(std::shared_ptr<NLEFilterInfo> filterInfo);

    int32_t InitParams() override;
    int32_t DoEffect(const FrameRecord& second, const FrameRecord& first, FrameRecord& out,
                     int32_t frameWidth, int32_t frameHeight, int32_t frameStride) override;

private:
    PictureParticles particles;
};

}  // namespace kelmo
