// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <opencv2/core/types.hpp>

namespace kelmo {

/// The ways that blades of light take across the frame.
enum class SweepPath : uint8_t {
    kNone,
    /// An arm through the centre that turns like the hand of a clock, then slides apart.
    kFromCentre,
    /// A line along the diagonal that swings open to the top and the right.
    kDiagonal,
    /// A line along a diagonal, from the corner that is named, that slides apart sideways.
    kFromBottomLeft,
    kFromTopRight,
    kFromBottomRight,
    kFromTopLeft,
    /// The first of these with a rest on the way.
    kFromBottomLeftWithRest,
    /// A line across the frame and its mirror image, which turn away.
    kCross,
    /// Three rectangles that grow about the centre and turn.
    kFan,
};

/// A straight line in device space.
struct SweepLine {
    cv::Point2f from, to;
};

/// What a sweep draws in one frame.
struct Sweep {
    static constexpr std::size_t kMostLines = 12;

    std::array<SweepLine, kMostLines> lines;
    std::size_t count = 0;
    /// The lines between which the new picture stands: a pair, and for rectangles the other pair.
    /// `pairs` says how many of them this frame has.
    std::array<SweepLine, 4> edges;
    std::size_t pairs = 0;
    /// The new picture stands between the edges from now on.
    bool blend = false;
};

/// The frame at `position` of a sweep that takes `frames` (above 0), on a picture of `size`.
Sweep SweepAt(SweepPath path, float position, float frames, const cv::Size& size);

}  // namespace kelmo
