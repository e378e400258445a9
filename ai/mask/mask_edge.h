// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <opencv2/core.hpp>

namespace kelmo {

/// How the edge of a mask is drawn. Lengths in pixels of a frame whose shorter side has 1080, so
/// that a preview looks as the final picture does.
struct MaskEdge {
    /// The edge moves outwards by this, inwards when negative. -200..200.
    float thickness = 0.0f;
    /// Width of the ramp from outside to inside, round the edge. 0..200; 0: as hard as the picture
    /// allows, or, with a thickness of 0 too, the network's own edge.
    float feather = 0.0f;

    bool IsNeutral() const { return thickness == 0.0f && feather == 0.0f; }
    /// Values put into their ranges; not finite ones become 0.
    MaskEdge Clamped() const;
};

/// Redraws a mask of 8 bits, one channel, any size, by the distance of each pixel to its edge
/// (where it crosses 127.5). `mask` stands for a frame of `frameSize`. A mask without edge stays as
/// it is.
void ApplyMaskEdge(const MaskEdge& edge, cv::Size frameSize, cv::Mat& mask);

}  // namespace kelmo
