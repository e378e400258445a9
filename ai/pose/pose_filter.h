// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ai/ai_filter.h"
#include "ai/pose/pose_tracker.h"

namespace kelmo {

/// Number of body points of a record.
inline constexpr size_t kPosePointCount = 19;

/// The body points of a record, in the order of docs/contracts.md: fractions of the frame; (-1, -1)
/// for a point that is not seen or lies outside the frame.
std::vector<std::pair<float, float>> PosePoints(const TrackedBody& body, cv::Size frame);

/// The filter that gives `HumanPoseDatas`. Null, with the reason in `error`, without its networks.
std::unique_ptr<AiFilter> CreatePoseFilter(std::shared_ptr<ModelStore> store, std::string& error);

}  // namespace kelmo
