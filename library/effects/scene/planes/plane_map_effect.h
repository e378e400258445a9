// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>

#include "bindings/ai_filter_handle.h"
#include "framework/filter/nle_opengl_combine_filter.h"

namespace kelmo {

/// A plane in space that follows a person.
///
/// Parameters: "rotate_x", "rotate_y", "rotate_z" (degrees), "scale" (1, half of the side),
/// "shifting" (its z), "center_x", "center_y", "center_z" (device space, added to the person's
/// place); "is_follow_size" 1: the scale goes with the person's width, 5.2 for one as wide as the
/// frame is high; "is_motion" 1: the plane runs from "uStartPos" (0 the top of the person, 1 the
/// feet) by "uOrientation" persons in "duration" seconds, round and round. Otherwise it stands at
/// half of the person's height.
///
/// Shader: "uRotMat" (mat3: z, then y, then x), "uCenter" (vec2, device space), "uRatioWH" (vec2,
/// the frame's width in its heights, and 1); attributes "position" (4) and "texcoord" (2) of two
/// triangles. Slot 0 is the clip. Without a mask the frame fails; with nobody in it the plane
/// stands in the middle.
class NLEOpenGLPlaneMapEffect : public NLEOpenGLCombineFilter {
public:
    explicit NLEOpenGLPlaneMapEffect(std::shared_ptr<NLEFilterInfo> filterInfo);

    int32_t InitParams() override;
    int32_t DoEffect(const FrameRecord& second, const FrameRecord& first, FrameRecord& out,
                     int32_t frameWidth, int32_t frameHeight, int32_t frameStride) override;

private:
    float HeightFraction();
    void SendPlane(const cv::Rect& person, const cv::Size& size);

    AIFilterHandle segmentation{kAIMaskFilter};
    cv::Mat maskMat;
    cv::Mat certain;
    std::array<float, 24> corners{};
};

}  // namespace kelmo
