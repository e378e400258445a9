// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/text/letters/letter_quads.h"
#include "framework/filter/nle_opengl_filter.h"

namespace kelmo {

/// Letters that dissolve towards the middle of the effect and are back at its end.
///
/// Attributes: those of `LetterQuads`. Uniform "dt": 1 at the ends, 0 in the middle. Slot 0 is the
/// picture of the text, the smaller the further it is gone, then the material. Without a text
/// nothing is drawn.
class NLEOpenGLShowCharWithROIEffect : public NLEOpenGLFilter {
public:
    explicit NLEOpenGLShowCharWithROIEffect(std::shared_ptr<NLEFilterInfo> filterInfo);

    int32_t InitParams() override;
    int32_t DoEffect(const FrameRecord& second, const FrameRecord& first, FrameRecord& out,
                     int32_t frameWidth, int32_t frameHeight, int32_t frameStride) override;

private:
    LetterQuads letters;
    cv::Mat scaled;
};

}  // namespace kelmo
