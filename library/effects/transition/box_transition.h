// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "framework/filter/nle_opengl_filter.h"
#include "framework/shared/matrix4.h"

namespace kelmo {

/// The two clips on the sides of one turning cube. The GUID picks the curve, the axis and the
/// camera's way.
///
/// All parameters go to the shader. Uniforms: "uMVP", "uProcessTime" (the curve's value), "iFrame".
/// Attributes: "position" (3), "normals" (3), "texcoord" (2) of a cube from -1 to 1. Slots: the
/// first clip, the second clip, the first pictures of the textures. A frame depends on its position
/// alone.
class NLEOpenGL3DBoxTransition : public NLEOpenGLFilter {
public:
    /// Where the cube stands at one moment.
    struct Pose {
        float processTime = 0.0F;
        Matrix4 model = kIdentity;
        /// Of the camera, in half edges of the cube.
        float y = 0.0F;
        float z = -3.412F;
        /// The cube turns as a true cube, then takes the frame's shape.
        bool keepsShape = false;
    };

    explicit NLEOpenGL3DBoxTransition(std::shared_ptr<NLEFilterInfo> filterInfo);

    int32_t InitParams() override;
    int32_t DoEffect(const FrameRecord& second, const FrameRecord& first, FrameRecord& out,
                     int32_t frameWidth, int32_t frameHeight, int32_t frameStride) override;

private:
    using PoseCurve = Pose (*)(float smoothTime);

    /// Null for a GUID without a curve: the cube stays as it is.
    PoseCurve curve;
    Matrix4 projection = Projection();
    Matrix4 mvp = kIdentity;
};

}  // namespace kelmo
