// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "framework/filter/nle_opengl_filter.h"

namespace kelmo {

/// Draws from time and parameters alone; no input is set. A stage of several effects.
class NLEOpenGLFractalNoiseEffect : public NLEOpenGLFilter {
public:
    explicit NLEOpenGLFractalNoiseEffect(std::shared_ptr<NLEFilterInfo> filterInfo);

    int32_t InitParams() override;
    int32_t DoEffect(const FrameRecord& second, const FrameRecord& first, FrameRecord& out,
                     int32_t frameWidth, int32_t frameHeight, int32_t frameStride) override;
};

}  // namespace kelmo
