// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "bindings/ai_filter_handle.h"
#include "framework/filter/nle_opengl_combine_filter.h"

namespace kelmo {

/// The clip (slot 0) and the mask of its people (slot 1) for a shader that treats people and
/// background apart. Without a picture to take a mask from, nothing is drawn and the result is 1;
/// without an AI library all is background.
///
/// Parameters: "downsampleRatio" (int, 1 when absent): the mask is worked out on a picture so many
/// times smaller. All go to the shader. Uniforms: "midHuman" (0), the time.
class NLEOpenGLHumanCutout : public NLEOpenGLCombineFilter {
public:
    explicit NLEOpenGLHumanCutout(std::shared_ptr<NLEFilterInfo> filterInfo);

    int32_t InitParams() override;
    int32_t DoEffect(const FrameRecord& second, const FrameRecord& first, FrameRecord& out,
                     int32_t frameWidth, int32_t frameHeight, int32_t frameStride) override;

private:
    float midHuman = 0.0F;
    AIFilterHandle aiHandle{kAIEdgeMaskFilter};
    cv::Mat maskMat;
};

}  // namespace kelmo
