// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "contract/frame_record.h"

namespace kelmo {

/// The reduced size in pixels at which effects work that follow a mask, for speed: the outline of a
/// person shows no more detail than that. `stride` in bytes, 4 to a pixel.
struct WorkingSize {
    int32_t width = 308;
    int32_t height = 548;
    int32_t stride = 1232;

    static constexpr WorkingSize Upright() { return {308, 548, 1232}; }
    static constexpr WorkingSize Wide() { return {548, 308, 2192}; }
    /// A square frame counts as upright.
    static constexpr WorkingSize For(int32_t frameWidth, int32_t frameHeight) {
        return frameWidth > frameHeight ? Wide() : Upright();
    }
    FrameRecord TargetLess() const { return FrameRecord::TargetLess(width, height, stride); }
};

}  // namespace kelmo
