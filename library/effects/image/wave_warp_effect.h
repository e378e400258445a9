// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "framework/filter/nle_opengl_filter.h"

namespace kelmo {

/// Two fixed passes, the second over the first one's picture. All parameters go to the shader, and
/// "calLayer" is 1 in the first pass, 2 in the second.
class NLEOpenGLWaveWarpEffect : public NLEOpenGLFilter {
public:
    explicit NLEOpenGLWaveWarpEffect(std::shared_ptr<NLEFilterInfo> filterInfo);

    int32_t InitParams() override;
    int32_t DoEffect(const FrameRecord& second, const FrameRecord& first, FrameRecord& out,
                     int32_t frameWidth, int32_t frameHeight, int32_t frameStride) override;
};

}  // namespace kelmo
