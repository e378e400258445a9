// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "framework/filter/nle_opengl_filter.h"

namespace kelmo {

/// Tells the shader where the opaque band of the clip that is on begins and ends: "edgeLeft" and
/// "edgeRight", fractions of the frame's width. Parameters go to the shader.
class NLEOpenGLTwill02Transition : public NLEOpenGLFilter {
public:
    explicit NLEOpenGLTwill02Transition(std::shared_ptr<NLEFilterInfo> filterInfo);

    int32_t DoEffect(const FrameRecord& second, const FrameRecord& first, FrameRecord& out,
                     int32_t frameWidth, int32_t frameHeight, int32_t frameStride) override;
};

}  // namespace kelmo
