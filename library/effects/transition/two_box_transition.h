// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>

#include "effects/transition/box_mesh.h"
#include "framework/filter/nle_opengl_filter.h"
#include "framework/shared/matrix4.h"

namespace kelmo {

/// The picture as two half boxes that turn against each other. The GUID picks the split and the
/// curve.
///
/// All parameters go to the shader. Instance arrays, one element a box: "uBoxRotateData" (degrees
/// about x, y, z), "uBoxMoveData", "uTexMoveData"; uniforms "uProj", "uProcessTime" (the curve's
/// value), "iFrame"; attributes and slots as those of the cube. A frame depends on its position
/// alone.
class NLEOpenGL3DTwoBoxTransition : public NLEOpenGLFilter {
public:
    explicit NLEOpenGL3DTwoBoxTransition(std::shared_ptr<NLEFilterInfo> filterInfo);

    int32_t InitParams() override;
    int32_t DoEffect(const FrameRecord& second, const FrameRecord& first, FrameRecord& out,
                     int32_t frameWidth, int32_t frameHeight, int32_t frameStride) override;

private:
    static constexpr int32_t kBoxes = 2;

    /// Poses of both boxes for a curve value: 0 closed, 1 turned by a quarter.
    void Place(float value);

    float (*curve)(float smoothTime) = nullptr;
    BoxSplit splitMode = BoxSplit::kLeftRight;
    Matrix4 projection = Projection();
    std::array<float, kBoxes * 4> boxRotate{};
    std::array<float, kBoxes * 4> boxMove{};
    std::array<float, kBoxes * 2> texMove{};
};

}  // namespace kelmo
