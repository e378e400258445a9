// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "framework/filter/nle_opengl_filter.h"
#include "framework/shared/kept_picture.h"

namespace kelmo {

/// Feedback: a picture of an earlier frame goes back into the shader and is renewed every few
/// frames.
///
/// Parameters: "speed" 0..1 (how often the kept picture is renewed; every frame when absent),
/// "filter" (float); all go to the shader. Shader: "isLastFrameAddLut" is 1 while there is no kept
/// picture. Slots: the clip, the kept picture, the first picture of the description's second
/// texture (transparent when the description has fewer than two).
class NLEOpenGLHallucinationEffect : public NLEOpenGLFilter {
public:
    explicit NLEOpenGLHallucinationEffect(std::shared_ptr<NLEFilterInfo> filterInfo);

    int32_t InitParams() override;
    int32_t DoEffect(const FrameRecord& second, const FrameRecord& first, FrameRecord& out,
                     int32_t frameWidth, int32_t frameHeight, int32_t frameStride) override;

private:
    /// Frames from one renewal of the kept picture to the next.
    int32_t Step(float framesPerSecond);
    void BindHistory(int32_t& slot, float framesPerSecond, int32_t frameWidth, int32_t frameHeight,
                     int32_t frameStride);

    KeptPicture kept;
    cv::Mat blankFrame;
};

}  // namespace kelmo
