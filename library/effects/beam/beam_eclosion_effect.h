// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "framework/filter/nle_opengl_filter.h"
#include "framework/shared/texture_reference.h"

namespace kelmo {

/// Feathers a picture in two passes; a stage of many effects.
///
/// Parameters go to the shader by name ("uEclosion" is the width). Shader: "uHorizontal" 0 in the
/// first pass and 1 in the second; "uChangeColor" and "color_r", "color_g", "color_b" for an owner
/// that wants one colour. The last picture but one stays in target 0.
class NLEOpenGLBeamEclosionEffect : public NLEOpenGLFilter {
public:
    explicit NLEOpenGLBeamEclosionEffect(std::shared_ptr<NLEFilterInfo> filterInfo);

    /// The picture to feather instead of the clip; set by an owner.
    TextureReference inputOverride;

    int32_t InitParams() override;
    int32_t DoEffect(const FrameRecord& second, const FrameRecord& first, FrameRecord& out,
                     int32_t frameWidth, int32_t frameHeight, int32_t frameStride) override;
};

}  // namespace kelmo
