// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>

namespace kelmo::host {

/// A place of a body's list of points.
struct BodyPoint {
    const char* name;  ///< key in files; "right" is the person's own right side
    double naturalX;   ///< where it stands on a body of natural size, fractions of the frame;
    double naturalY;   ///< negative: nothing is measured by it
};

/// The order of docs/contracts.md. Two points have a second place, under the same name.
inline constexpr std::array<BodyPoint, 19> kBodyPoints = {{
    {"nose", -1, -1},
    {"right eye", 0.475, 0.36},
    {"left eye", 0.525, 0.36},
    {"right elbow", -1, -1},
    {"right hand", -1, -1},
    {"right shoulder", 0.36, 0.62},
    {"left shoulder", 0.64, 0.62},
    {"right elbow", -1, -1},
    {"left elbow", -1, -1},
    {"right hand", -1, -1},
    {"left hand", -1, -1},
    {"right hip", -1, -1},
    {"left hip", -1, -1},
    {"right knee", -1, -1},
    {"left knee", -1, -1},
    {"right ankle", -1, -1},
    {"left ankle", -1, -1},
    {"right ear", -1, -1},
    {"left ear", -1, -1},
}};

}  // namespace kelmo::host
