// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/transition/moving_bubble.h"
#include "framework/filter/nle_opengl_filter.h"

namespace kelmo {

/// Draws the swarm, added up, as the mask of a transition. The GUID picks the swarm; for another
/// GUID there is none. All parameters go to the shader. Attributes: "position" (4), "texcoord" (3),
/// "attributes" (4).
class NLEOpenGLMovingBubbleMask : public NLEOpenGLFilter {
public:
    explicit NLEOpenGLMovingBubbleMask(std::shared_ptr<NLEFilterInfo> filterInfo);

    int32_t DoEffect(const FrameRecord& second, const FrameRecord& first, FrameRecord& out,
                     int32_t frameWidth, int32_t frameHeight, int32_t frameStride) override;

private:
    BubbleSwarm swarm;
};

}  // namespace kelmo
