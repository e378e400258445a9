// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "framework/filter/nle_opengl_filter.h"
#include "framework/shared/texture_reference.h"

namespace kelmo {

/// One pass whose shader gets everything from the parameters; an owner may give another picture as
/// its input.
class NLEOpenGL3DTransform : public NLEOpenGLFilter {
public:
    explicit NLEOpenGL3DTransform(std::shared_ptr<NLEFilterInfo> filterInfo);

    /// The picture to draw instead of the clip; set by an owner.
    TextureReference inputOverride;

    int32_t DoEffect(const FrameRecord& second, const FrameRecord& first, FrameRecord& out,
                     int32_t frameWidth, int32_t frameHeight, int32_t frameStride) override;
};

}  // namespace kelmo
