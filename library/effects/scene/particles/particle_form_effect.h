// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/scene/particles/particle_lattice.h"
#include "framework/engine/color_uniform.h"
#include "framework/filter/nle_opengl_filter.h"
#include "framework/filter/sub_filters.h"
#include "framework/shared/matrix4.h"

namespace kelmo {

/// The clip as a flat lattice of particles before a camera, 3.4 away, that turns while density,
/// size and depth change.
///
/// The motion lasts "rotate_frame_count" frames and then holds. Over it go from "..._start" to
/// "..._end": "uCount" (int, particles along the longer side), "uParticleSize" and "Z_Offset"
/// (floats), each to the uniform of that name; and "rotate_start_angle" to "rotate_end_angle"
/// (degrees about y). Besides: "center_x", "center_y", "rotate_x", "rotate_y", "rotate_z"
/// (degrees), "color" (0xRRGGBB, as "color_r", "color_g", "color_b"), and with "enableBGColor" 1
/// the colour "BGColor" behind it all, which a stage lays. An absent parameter is 0.
///
/// Uniform "uMVP"; attributes "position" (3) and "texcoord" (2), see ParticleLattice. Slot 0 is the
/// clip; material follows. Particles add up.
class NLEOpenGLParticleFormEffect : public NLEOpenGLFilter {
public:
    explicit NLEOpenGLParticleFormEffect(std::shared_ptr<NLEFilterInfo> filterInfo);

    int32_t InitEffect() override;
    int32_t Resize(int32_t newWidth, int32_t newHeight, int32_t newStride) override;
    int32_t InitParams() override;
    int32_t DoEffect(const FrameRecord& second, const FrameRecord& first, FrameRecord& out,
                     int32_t frameWidth, int32_t frameHeight, int32_t frameStride) override;

private:
    void SetMotion(int32_t frameWidth, int32_t frameHeight);
    Matrix4 Camera(float turn);
    int32_t DrawOverBackground(FrameRecord& out, int32_t frameWidth, int32_t frameHeight,
                               int32_t frameStride);

    SubFilters stages{this};
    NLEOpenGLFilter* background;
    ParticleLattice lattice;
    cv::Size grid;
    Matrix4 mvp = kIdentity;
    ColorUniform colorBytes{"color"};
};

/// A box of particles, lit by a point light, before a camera 2.6 away.
///
/// Parameters: "uParticleInX", "uParticleInY", "uParticleInZ" (int); "center_x", "center_y",
/// "rotate_x", "rotate_y", "rotate_z" (degrees), 0 when absent; "LightingPoint0Ambient",
/// "LightingPoint0Diffuse", "LightingPoint0Specular" (0xRRGGBB), as vec3 uniforms
/// "uLightingPoint0AmbientColor" and so on.
///
/// Uniforms "uMVP" and "uModel"; attributes "position" (4) and "texcoord" (2), see ParticleLattice.
/// Slots hold the material alone. Particles add up.
class NLEOpenGLFormParticleUnityEffect : public NLEOpenGLFilter {
public:
    explicit NLEOpenGLFormParticleUnityEffect(std::shared_ptr<NLEFilterInfo> filterInfo);

    int32_t InitParams() override;
    int32_t DoEffect(const FrameRecord& second, const FrameRecord& first, FrameRecord& out,
                     int32_t frameWidth, int32_t frameHeight, int32_t frameStride) override;

private:
    void SetLight();

    ParticleLattice lattice;
    cv::Vec3i grid;
    Matrix4 mvp = kIdentity;
    Matrix4 model = kIdentity;
};

}  // namespace kelmo
