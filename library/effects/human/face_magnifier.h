// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "bindings/ai_filter_handle.h"
#include "framework/filter/nle_opengl_combine_filter.h"

namespace kelmo {

/// Tells its shader where the biggest face is: "centerX", "centerY" (the middle of its box, in
/// pixels of the frame, y down) and "radius" (the larger of the box's sides, each as a fraction of
/// the frame's side).
///
/// A frame without a face, or without the AI library, keeps what was there before; until the first
/// face that is the corner (0, 0) with 0.01. The parameter at index 4 of the description holds the
/// lens where it is, when it is not 0: faces are still looked for, and taken as soon as it is let
/// go. Boxes without a finite area are no faces.
class NLEOpenGLFaceMagnifier : public NLEOpenGLCombineFilter {
public:
    explicit NLEOpenGLFaceMagnifier(std::shared_ptr<NLEFilterInfo> filterInfo);

    int32_t InitParams() override;
    int32_t DoEffect(const FrameRecord& second, const FrameRecord& first, FrameRecord& out,
                     int32_t frameWidth, int32_t frameHeight, int32_t frameStride) override;

private:
    void FindFace(const FrameRecord& first, int32_t frameWidth, int32_t frameHeight,
                  int32_t frameStride);
    void HoldOrFollow();

    AIFilterHandle aiHandle{kAIFaceFilter};
    float centerX = 0.0F;
    float centerY = 0.0F;
    float heldCenterX = 0.0F;
    float heldCenterY = 0.0F;
    float radius = 0.01F;
    float heldRadius = 0.01F;
};

}  // namespace kelmo
