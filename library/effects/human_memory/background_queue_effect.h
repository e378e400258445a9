// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/human_memory/background_queue_accum_effect.h"
#include "framework/filter/sub_filters.h"

namespace kelmo {

/// The last nine pictures of the people, for a shader that draws all of them. Slots: the clip, the
/// grey mask, the material, nine pictures from the oldest on.
///
/// Numbers among the parameters go to the shader and to the stage that keeps the pictures. Without
/// it, or without a picture, the result is 1.
class NLEOpenGLBackGroundQueueEffect : public NLEOpenGLFilter {
public:
    explicit NLEOpenGLBackGroundQueueEffect(std::shared_ptr<NLEFilterInfo> filterInfo);

    int32_t InitEffect() override;
    int32_t Resize(int32_t newWidth, int32_t newHeight, int32_t newStride) override;
    int32_t DoEffect(const FrameRecord& second, const FrameRecord& first, FrameRecord& out,
                     int32_t frameWidth, int32_t frameHeight, int32_t frameStride) override;

private:
    void HandOverNumbers();

    SubFilters stages{this};
    NLEOpenGLBackGroundQueueAccumEffect* queueFilter;
    cv::Mat small;
};

}  // namespace kelmo
