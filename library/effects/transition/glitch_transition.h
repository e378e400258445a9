// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/transition/clip_measure.h"
#include "framework/filter/nle_opengl_filter.h"

namespace kelmo {

/// Measures the darkest and brightest levels of the clip that is on, and leaves the rest to the
/// shader.
///
/// One GUID always measures the first clip, the other the one that is on: the first up to the
/// middle, then the second. Parameters go to the shader. Shader: "minGray" and "maxGray", 0..1; a
/// black picture leaves them as they were.
class NLEOpenGLGlitchTransition : public NLEOpenGLFilter {
public:
    explicit NLEOpenGLGlitchTransition(std::shared_ptr<NLEFilterInfo> filterInfo);

    int32_t DoEffect(const FrameRecord& second, const FrameRecord& first, FrameRecord& out,
                     int32_t frameWidth, int32_t frameHeight, int32_t frameStride) override;

private:
    bool alwaysFirst;
    GrayRange range;
    cv::Mat gray;
};

}  // namespace kelmo
