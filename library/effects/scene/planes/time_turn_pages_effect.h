// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>

#include "effects/scene/planes/clock_digits.h"
#include "framework/filter/nle_opengl_filter.h"
#include "framework/filter/sub_filters.h"

namespace kelmo {

/// A flip clock that counts down.
///
/// Parameters: "uPageCount" (int, pages), "Number_hour", "Number_minute", "Number_second" (int, the
/// start), "General_speed" (seconds of the clock in a second); with "Number_count" (int) a plain
/// count from there instead. "Theme_blend_alpha" and "General_opacity" go to the theme stage as
/// "BlendAlpha" and "Opacity", all others by their names.
///
/// Shader: per instance (a page) "uPagePos" = index and number of pages; attributes "position" and
/// "texcoord" (3 each) are four sheets of an upper and a lower half, x and y in -1..1, from the
/// farthest (z = -4, -3, -2) to the nearest (0). It draws twice: with "uComposed" 0 the pages, to
/// which the page stage gives a shadow and the theme stage their light and opacity; with 1 the
/// whole, from the slots clip, material, pages with shadow, pages with light. Integers: "sHour",
/// "sMinute", "sSecond", "sTotalTime" (seconds left), "sCount", and "leftNumHour", "rightNumHour",
/// "leftNumNextHour", "rightNumNextHour" and so on for minutes and seconds.
class NLEOpenGLTimeTurnPagesEffect : public NLEOpenGLFilter {
public:
    explicit NLEOpenGLTimeTurnPagesEffect(std::shared_ptr<NLEFilterInfo> filterInfo);

    int32_t InitEffect() override;
    int32_t Resize(int32_t newWidth, int32_t newHeight, int32_t newStride) override;
    int32_t InitParams() override;
    int32_t DoEffect(const FrameRecord& second, const FrameRecord& first, FrameRecord& out,
                     int32_t frameWidth, int32_t frameHeight, int32_t frameStride) override;

private:
    static constexpr int32_t kMostPages = 3;

    void HandOverTheme();
    ClockDigits DigitsNow();
    int32_t DrawPages(FrameRecord& withShadow, FrameRecord& withLight, int32_t frameWidth,
                      int32_t frameHeight, int32_t frameStride);
    void SendDigits(const ClockDigits& digits);

    SubFilters stages{this};
    NLEOpenGLFilter* pageFilter;
    NLEOpenGLFilter* themeFilter;
    std::array<float, 2 * kMostPages> pagePos{};
};

}  // namespace kelmo
