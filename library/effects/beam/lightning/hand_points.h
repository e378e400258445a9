// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <opencv2/core/types.hpp>
#include <optional>

#include "contract/ai_filter.h"

namespace kelmo {

/// Both hands and elbows of one person in device space; empty where the point was not found.
struct HandPoints {
    enum Side : std::size_t { kLeft = 0, kRight = 1 };
    static constexpr std::size_t kSides = 2;

    std::array<std::optional<cv::Point2f>, kSides> hands;
    std::array<std::optional<cv::Point2f>, kSides> elbows;

    static HandPoints Of(const AIDATA::HumanPose& person);
    /// Leaves the hands that "leftOrRight" asks for: 0 left, 1 right, 2 both.
    void Choose(int32_t leftOrRight);
};

}  // namespace kelmo
