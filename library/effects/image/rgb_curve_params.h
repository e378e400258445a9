// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>

namespace kelmo {

/// The curves of a grade, in the order of their strips.
enum CurveChannel : int { kCurveRed, kCurveGreen, kCurveBlue, kCurveMaster, kCurveChannels };

/// Text parameters of one channel: knots, and the two lists of controls (computed when one is
/// empty).
struct CurveParamNames {
    const char* knots;
    const char* firstControls;
    const char* secondControls;
};

inline constexpr std::array<CurveParamNames, kCurveChannels> kCurveParams = {{
    {"rKnots", "rKnot_First_Controls", "rKnot_Second_Controls"},
    {"gKnots", "gKnot_First_Controls", "gKnot_Second_Controls"},
    {"bKnots", "bKnot_First_Controls", "bKnot_Second_Controls"},
    {"yKnots", "yKnot_First_Controls", "yKnot_Second_Controls"},
}};

/// Size of a strip in pixels: one column for each level of an 8-bit picture.
inline constexpr int kCurveStripWidth = 256;
inline constexpr int kCurveStripStride = kCurveStripWidth * 4;

inline constexpr const char* kCurveLookTableGuid = "71C2D3C0-E2BF-43C3-AFA3-BC04C11E68F4";

}  // namespace kelmo
