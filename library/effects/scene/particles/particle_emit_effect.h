// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/scene/particles/emitted_particles.h"
#include "framework/filter/nle_opengl_filter.h"

namespace kelmo {

/// Particles over what is not black in the clip, moved by the vertex shader.
///
/// Parameters: "uCount" (int, particles); "TextIsUpdate" (int): while it is not 0 the particles
/// follow the clip. Otherwise they stay where the first frame put them until the count changes.
/// Attributes: "position" (4), "direction" (4) and "texcoord" (3), see
/// EmittedParticles::BuildOver. Slot 0 is the clip; material follows.
class NLEOpenGLParticleEmitEffect : public NLEOpenGLFilter {
public:
    explicit NLEOpenGLParticleEmitEffect(std::shared_ptr<NLEFilterInfo> filterInfo);

    int32_t DoEffect(const FrameRecord& second, const FrameRecord& first, FrameRecord& out,
                     int32_t frameWidth, int32_t frameHeight, int32_t frameStride) override;

private:
    void BuildEmitBuffers(const FrameRecord& frame, int32_t particles);

    EmittedParticles particles;
};

/// Particles over the whole frame, one more than "uCount" (int) says: the first may be the backdrop
/// of the others. Attributes: "position" (4) and "texcoord" (3), see EmittedParticles::Build.
class NLEOpenGLParticleEmitNoMaskEffect : public NLEOpenGLFilter {
public:
    explicit NLEOpenGLParticleEmitNoMaskEffect(std::shared_ptr<NLEFilterInfo> filterInfo);

    int32_t DoEffect(const FrameRecord& second, const FrameRecord& first, FrameRecord& out,
                     int32_t frameWidth, int32_t frameHeight, int32_t frameStride) override;

private:
    EmittedParticles particles;
};

}  // namespace kelmo
