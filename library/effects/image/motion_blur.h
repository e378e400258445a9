// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <vector>

#include "framework/filter/nle_opengl_filter.h"

namespace kelmo {

/// The mean of recent frames, which the owner hands over before each frame. Used as a stage:
/// without an owner that feeds it, it draws nothing and reports success.
class NLEOpenGLMotionBlur : public NLEOpenGLFilter {
public:
    /// Frames beyond the engine's slots do not count.
    static constexpr int32_t kInputSlots = 17;
    static constexpr int32_t kMostFrames = 16;
    /// Result for a frame without size.
    static constexpr int32_t kBadSize = 3;

    explicit NLEOpenGLMotionBlur(std::shared_ptr<NLEFilterInfo> filterInfo);

    /// Newest first. Borrowed: must live until `DoEffect` has returned.
    const std::vector<FrameRecord>* historyFrames = nullptr;

    int32_t InitParams() override;
    int32_t DoEffect(const FrameRecord& second, const FrameRecord& first, FrameRecord& out,
                     int32_t frameWidth, int32_t frameHeight, int32_t frameStride) override;
};

}  // namespace kelmo
