// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "framework/filter/nle_opengl_filter.h"

namespace kelmo {

/// Draws its layers into the engine's result, where an owner finds them; `out` is not drawn.
class NLEOpenGLCompareDepth : public NLEOpenGLFilter {
public:
    explicit NLEOpenGLCompareDepth(std::shared_ptr<NLEFilterInfo> filterInfo);

    int32_t DoEffect(const FrameRecord& second, const FrameRecord& first, FrameRecord& out,
                     int32_t frameWidth, int32_t frameHeight, int32_t frameStride) override;

private:
    /// A third layer; without picture as long as nothing gives it one.
    FrameRecord extraFrame;
};

}  // namespace kelmo
