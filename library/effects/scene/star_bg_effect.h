// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "bindings/ai_filter_handle.h"
#include "framework/filter/nle_opengl_combine_filter.h"

namespace kelmo {

/// A sky behind the people of the clip: hands its shader the clip (slot 0), the people's mask
/// (slot 1) and, from slot 2 on, the material but for the first one, which stands for the mask.
///
/// Without a mask, and without the AI library, the frame fails: the host shows the clip.
class NLEOpenGLStarBGEffect : public NLEOpenGLCombineFilter {
public:
    explicit NLEOpenGLStarBGEffect(std::shared_ptr<NLEFilterInfo> filterInfo);

    int32_t InitParams() override;
    int32_t DoEffect(const FrameRecord& second, const FrameRecord& first, FrameRecord& out,
                     int32_t frameWidth, int32_t frameHeight, int32_t frameStride) override;

private:
    AIFilterHandle segmentation{kAIMaskFilter};
    cv::Mat maskMat;
};

}  // namespace kelmo
