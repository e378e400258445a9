// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "bindings/ai_filter_handle.h"
#include "framework/filter/nle_opengl_combine_filter.h"

namespace kelmo {

/// Material that stands behind a person and goes with them. Slots: the clip, the grey mask of its
/// people, the textures of the description, loaded in the background. Without a picture nothing is
/// drawn and the result is 1.
///
/// Parameters, all of which go to the shader: "scale" (1 when absent): size of the material, 1 is
/// one pixel of it on one pixel of the clip; "center_x", "center_y" (0): where to move it.
///
/// Uniforms: "uBound", left, top, right and bottom of the material round the middle of the people,
/// in fractions of the clip, y down. With nobody to be seen it lies beyond the lower right corner
/// (`kBoundOfNobody`), so that the material is seen nowhere. "uCenter": the two parameters and 0.
/// No time: what moves is the material.
class NLEOpenGLHumanMapEffect : public NLEOpenGLCombineFilter {
public:
    static constexpr float kBoundOfNobody[4] = {2.0F, 2.0F, 3.0F, 3.0F};

    explicit NLEOpenGLHumanMapEffect(std::shared_ptr<NLEFilterInfo> filterInfo);

    int32_t InitParams() override;
    int32_t DoEffect(const FrameRecord& second, const FrameRecord& first, FrameRecord& out,
                     int32_t frameWidth, int32_t frameHeight, int32_t frameStride) override;

private:
    /// Waits for the first frame of the material.
    cv::Size MaterialSize() const;
    void SendBound(float scale);

    AIFilterHandle aiHandle{kAIMaskFilter};
    cv::Mat maskMat;
    /// What of the mask is a person for certain.
    cv::Mat certain;
};

}  // namespace kelmo
