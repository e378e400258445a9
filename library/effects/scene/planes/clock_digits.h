// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>

namespace kelmo {

/// Two digits of a page, and those that the countdown shows next.
struct PageDigits {
    int32_t left = 0, right = 0;
    int32_t nextLeft = 0, nextRight = 0;
};

/// What a countdown shows at one moment. A second that has begun counts as a whole one.
struct ClockDigits {
    int32_t total = 0;  ///< seconds left
    int32_t hour = 0, minute = 0, second = 0;
    int32_t count = 0;                ///< of a plain count, 0..99
    std::array<PageDigits, 3> pages;  ///< hours, minutes, seconds; a plain count has the last alone

    /// `start` and `elapsed` in hundredths of a second; what is left never goes below 0.
    static ClockDigits OfClock(int64_t start, int64_t elapsed);
    static ClockDigits OfCount(int64_t start, int64_t elapsed);
};

}  // namespace kelmo
