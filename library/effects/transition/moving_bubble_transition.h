// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "framework/filter/nle_opengl_filter.h"
#include "framework/filter/sub_filters.h"

namespace kelmo {

/// A swarm of bubbles opens the second clip; the GUID picks the swarm. All parameters go to the
/// shader. Slots: the two clips, the swarm's picture, the first pictures of the textures.
class NLEOpenGLMovingBubbleTransition : public NLEOpenGLFilter {
public:
    explicit NLEOpenGLMovingBubbleTransition(std::shared_ptr<NLEFilterInfo> filterInfo);

    int32_t InitEffect() override;
    int32_t DoEffect(const FrameRecord& second, const FrameRecord& first, FrameRecord& out,
                     int32_t frameWidth, int32_t frameHeight, int32_t frameStride) override;

private:
    SubFilters subFilters{this};
    NLEOpenGLFilter* mask;
};

}  // namespace kelmo
