// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace kelmo {

/// Says when pictures that an effect keeps between frames are still its past, and when they belong
/// to another moment and must be forgotten: on the first frame, after a size change, and after a
/// jump of `jumpLimit` or more in either direction.
class FeedbackTrail {
public:
    explicit constexpr FeedbackTrail(int32_t limit) : jumpLimit(limit) {}

    /// `index` counts frames or ticks, as the owner chose.
    constexpr bool Restarts(int32_t index, bool sizeChanged) const {
        if (first || sizeChanged) return true;
        const int64_t jump = static_cast<int64_t>(index) - last;
        return jump >= jumpLimit || -jump >= jumpLimit;
    }
    /// The frame of this index was drawn. A failed frame is not reported.
    constexpr void Keep(int32_t index) {
        first = false;
        last = index;
    }
    constexpr void Forget() { first = true; }
    /// The index drawn last; 0 before there is one.
    constexpr int32_t Last() const { return last; }

private:
    int32_t jumpLimit;
    int32_t last = 0;
    bool first = true;
};

}  // namespace kelmo
