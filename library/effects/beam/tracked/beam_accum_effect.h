// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <opencv2/core.hpp>
#include <vector>

#include "bindings/ai_filter_handle.h"
#include "effects/beam/lines/beam_effect.h"
#include "effects/beam/lines/contour_to_lines.h"
#include "framework/filter/nle_opengl_combine_filter.h"
#include "framework/filter/sub_filters.h"
#include "framework/shared/feedback_trail.h"

namespace kelmo {

/// The outline of the largest person, drawn over what was drawn before; a stage of others. The
/// picture is in target 0.
///
/// Parameters: "uBlend" (float, 7.5), "uRadius" for the lines, "segment" (thousandths, the shortest
/// line). Shader: the lines in slot 0, the picture before in slot 1: an empty one at first and
/// after a jump of 6 frames or more; "elapsed" are the seconds between the two. A failed mask gives
/// kFilterFailed and forgets nothing.
class NLEOpenGLBeamAccumEffect : public NLEOpenGLCombineFilter {
public:
    explicit NLEOpenGLBeamAccumEffect(std::shared_ptr<NLEFilterInfo> filterInfo);

    int32_t InitEffect() override;
    int32_t Resize(int32_t newWidth, int32_t newHeight, int32_t newStride) override;
    int32_t InitParams() override;
    int32_t DoEffect(const FrameRecord& second, const FrameRecord& first, FrameRecord& out,
                     int32_t frameWidth, int32_t frameHeight, int32_t frameStride) override;

private:
    bool MakeLines(const FrameRecord& first, const cv::Size& size);

    AIFilterHandle segmentation{kAIMaskFilter};
    SubFilters stages{this};
    NLEOpenGLBeamEffect* beam;
    ContourToLines converter;
    FeedbackTrail trail{6};
    cv::Mat resetFrame;
    cv::Mat maskMat;
    cv::Mat binary;
    std::vector<std::vector<cv::Point>> contours;
};

}  // namespace kelmo
