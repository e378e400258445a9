// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "framework/filter/nle_opengl_filter.h"
#include "framework/shared/texture_reference.h"

namespace kelmo {

/// A wide blur: "uIterations" passes that halve the picture and as many that double it again.
///
/// Parameters: "uIterations" (0 or absent draws the picture as it is); all others go to the shader.
/// Shader: "calLayer" 0 down, 1 up, 2 copy; "curIteration" counts the passes of a direction from 0.
class NLEOpenGLDualKawaseBlur : public NLEOpenGLFilter {
public:
    /// More would halve a picture of 16384 pixels to nothing.
    static constexpr int32_t kMostIterations = 14;

    explicit NLEOpenGLDualKawaseBlur(std::shared_ptr<NLEFilterInfo> filterInfo);

    /// The picture to blur instead of the clip; set by an owner.
    TextureReference inputOverride;

    int32_t InitParams() override;
    int32_t DoEffect(const FrameRecord& second, const FrameRecord& first, FrameRecord& out,
                     int32_t frameWidth, int32_t frameHeight, int32_t frameStride) override;

private:
    void BindInput(const FrameRecord& first, int32_t frameWidth, int32_t frameHeight,
                   int32_t frameStride);

    /// The intermediate holds a pass of this frame.
    bool rendered = false;
};

}  // namespace kelmo
