// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/scene/planes/clock_digits.h"

#include <algorithm>

namespace kelmo {
namespace {

/// The digits of a number, and the ones before them when the left one has `tens` values.
PageDigits Page(int32_t number, int32_t tens) {
    PageDigits page;
    page.left = number / 10;
    page.right = number % 10;
    page.nextLeft = (page.left + tens - 1) % tens;
    page.nextRight = (page.right + 9) % 10;
    return page;
}

int32_t SecondsLeft(int64_t start, int64_t elapsed) {
    const int64_t left = std::max<int64_t>(start - elapsed, 0);
    return static_cast<int32_t>(std::min<int64_t>((left + 99) / 100, INT32_MAX));
}

}  // namespace

ClockDigits ClockDigits::OfClock(int64_t start, int64_t elapsed) {
    ClockDigits digits;
    digits.total = SecondsLeft(start, elapsed);
    digits.hour = digits.total / 3600 % 24;
    digits.minute = digits.total / 60 % 60;
    digits.second = digits.total % 60;
    digits.pages = {Page(digits.hour, 3), Page(digits.minute, 6), Page(digits.second, 6)};
    return digits;
}

ClockDigits ClockDigits::OfCount(int64_t start, int64_t elapsed) {
    ClockDigits digits;
    digits.total = SecondsLeft(start, elapsed);
    digits.count = digits.total % 100;
    digits.pages[2] = Page(digits.count, 10);
    return digits;
}

}  // namespace kelmo
