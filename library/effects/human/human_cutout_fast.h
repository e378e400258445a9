// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "bindings/ai_filter_handle.h"
#include "framework/filter/nle_opengl_combine_filter.h"

namespace kelmo {

/// The clip (slot 0) and the people cut out of it (slot 1, premultiplied) for a shader that draws
/// them a second time, with where they stand. Without a picture nothing is drawn and the result is
/// 1; without an AI library the cutout is empty.
///
/// Parameters: "downsampleRatio" (int, 1 when absent): the cutout is so many times smaller than the
/// clip; "offsetHalfHuman" (float): asks for "midHuman". All go to the shader.
///
/// Uniforms: the time and "midHuman", 0..1 from the left: the middle of the leftmost person. It
/// stays as it was while "offsetHalfHuman" is absent, and is 1 when that is 0.2: no middle then.
class NLEOpenGLHumanCutoutFast : public NLEOpenGLCombineFilter {
public:
    explicit NLEOpenGLHumanCutoutFast(std::shared_ptr<NLEFilterInfo> filterInfo);

    int32_t InitParams() override;
    int32_t DoEffect(const FrameRecord& second, const FrameRecord& first, FrameRecord& out,
                     int32_t frameWidth, int32_t frameHeight, int32_t frameStride) override;

private:
    void SendMiddle();
    /// As "midHuman" above; half of its left end for a person that reaches the right edge, 0 for
    /// nobody.
    float MiddleOfPerson();

    float midHuman = 0.0F;
    AIFilterHandle aiHandle{kAIMaskFilter};
    cv::Mat reduced;
    cv::Mat maskMat;
    cv::Mat cutout;
    // Steps from the mask to its column sums, kept for their memory.
    cv::Mat clearMask;
    cv::Mat greyMask;
    cv::Mat columnSums;
};

}  // namespace kelmo
