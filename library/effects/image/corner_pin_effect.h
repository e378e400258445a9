// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>

#include "framework/filter/nle_opengl_filter.h"

namespace kelmo {

/// Pins the corners of the picture to four places of the frame.
///
/// Parameters, fractions of the frame with (0, 0) at the top left: "left_upx", "left_upy",
/// "right_upx", "right_upy", "left_downx", "left_downy", "right_downx", "right_downy"; one that is
/// absent keeps its value, and they start at the frame's own corners. Values outside 0..1 lie
/// outside the frame. Four places that are no convex quad leave the picture as it is. Shader:
/// "perspective_mat" (mat3, from a place in the frame to its place in the picture, in pixels with y
/// down), "is_conv", "result_roi" (the region that the pinned picture takes).
class NLEOpenGLCornerPinEffect : public NLEOpenGLFilter {
public:
    explicit NLEOpenGLCornerPinEffect(std::shared_ptr<NLEFilterInfo> filterInfo);

    int32_t InitParams() override;
    int32_t DoEffect(const FrameRecord& second, const FrameRecord& first, FrameRecord& out,
                     int32_t frameWidth, int32_t frameHeight, int32_t frameStride) override;

private:
    void ReadCorners();
    void UpdateMatrix(float right, float bottom);

    /// Last transform of a convex quad, from the picture to the frame.
    cv::Mat homography;
    /// The matrix for the shader, column by column.
    std::array<float, 9> perspectiveMat = {1, 0, 0, 0, 1, 0, 0, 0, 1};
    uint8_t isConvex = 1;
    float leftUpX = 0.0F;
    float leftUpY = 0.0F;
    float rightUpX = 1.0F;
    float rightUpY = 0.0F;
    float leftDownX = 0.0F;
    float leftDownY = 1.0F;
    float rightDownX = 1.0F;
    float rightDownY = 1.0F;
};

/// Whether p0, p1, p3, p2 (left top, right top, right bottom, left bottom) turn the same way at all
/// four corners.
bool IsConvexQuad(const std::array<cv::Point2f, 4>& p);

}  // namespace kelmo
