// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "bindings/ai_filter_handle.h"
#include "framework/filter/nle_opengl_combine_filter.h"

namespace kelmo {

/// The clip (slot 0) and the mask of its people (slot 1), whose edge the user moves and softens.
/// Without a picture nothing is drawn and the result is 1; without an AI library all is background.
///
/// Parameters, told by their place in the description: the first two go to the shader, the third is
/// the AI filter's "Edge Thickness", the fourth its "Edge Feather". Uniforms: the time.
class NLEOpenGLHumanGlitchEffect : public NLEOpenGLCombineFilter {
public:
    explicit NLEOpenGLHumanGlitchEffect(std::shared_ptr<NLEFilterInfo> filterInfo);

    int32_t InitParams() override;
    int32_t DoEffect(const FrameRecord& second, const FrameRecord& first, FrameRecord& out,
                     int32_t frameWidth, int32_t frameHeight, int32_t frameStride) override;

private:
    void SendEdge() const;

    AIFilterHandle aiHandle{kAIEdgeMaskFilter};
    cv::Mat maskMat;
};

/// The same with another shader.
class NLEOpenGLHumanPixlateEffect : public NLEOpenGLHumanGlitchEffect {
public:
    using NLEOpenGLHumanGlitchEffect::NLEOpenGLHumanGlitchEffect;
};

}  // namespace kelmo
