// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <span>

#include "effects/beam/lightning/fractal_bolt.h"

namespace kelmo {

/// How branches leave a bolt. Angles in degrees: at least `minAngle` to either side, at most
/// `angleRange` more. A branch strays by `displaceRatio` of its length at first.
struct BranchShape {
    float minAngle = 0.0F;
    float angleRange = 18.0F;
    float displaceRatio = 0.37F;
    float detail = 0.009F;
    float displaceScale = 1.0F;
};

/// By rising distance from `from`; equal distances keep their order.
void SortPointsByDistance(std::span<BoltPoint> points, const cv::Point2f& from);

/// Draws `branches` side branches that leave a bolt of `length` (device units) at points of its
/// own, each 0.3 to 0.6 of it long and fainter, in about the direction in which the bolt goes on. A
/// branch may be lost, none branches again. Draws from the thread's random numbers. 1, and no
/// branch, when there are fewer points than branches, none are wanted, or more than
/// `kMostBranches`; otherwise 0.
int GenerateBranches(std::span<const BoltPoint> points, float length, int branches,
                     const BranchShape& shape, const BoltLineSink& sink);

inline constexpr int kMostBranches = 64;

}  // namespace kelmo
