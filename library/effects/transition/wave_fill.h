// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "framework/filter/nle_opengl_filter.h"

namespace kelmo {

/// Tells the shader which part of the frame the first clip's picture takes: "orig_roi" (left, top,
/// width, height as fractions; all zero when the clip is black). Parameters go to the shader;
/// slots: the two clips, the first pictures of the textures.
class NLEOpenGLWaveFill : public NLEOpenGLFilter {
public:
    explicit NLEOpenGLWaveFill(std::shared_ptr<NLEFilterInfo> filterInfo);

    int32_t InitParams() override;
    int32_t DoEffect(const FrameRecord& second, const FrameRecord& first, FrameRecord& out,
                     int32_t frameWidth, int32_t frameHeight, int32_t frameStride) override;

private:
    cv::Rect2f roi{0.0F, 0.0F, 1.0F, 1.0F};
    cv::Mat gray;
};

}  // namespace kelmo
