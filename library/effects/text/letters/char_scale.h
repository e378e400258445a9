// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/text/letters/letter_quads.h"
#include "framework/filter/nle_opengl_filter.h"

namespace kelmo {

/// Moves, turns and scales the letters of a text, each by itself.
///
/// Attributes: those of `LetterQuads` with "texcoord_center". Uniforms: "dt", "iInputSize"
/// (pixels). Slot 0 is the picture of the text, then the material.
class NLEOpenGLCharScale : public NLEOpenGLFilter {
public:
    explicit NLEOpenGLCharScale(std::shared_ptr<NLEFilterInfo> filterInfo);

    int32_t InitParams() override;
    int32_t DoEffect(const FrameRecord& second, const FrameRecord& first, FrameRecord& out,
                     int32_t frameWidth, int32_t frameHeight, int32_t frameStride) override;

private:
    LetterQuads letters;
};

}  // namespace kelmo
