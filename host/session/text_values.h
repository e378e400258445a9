// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/media/common/frame_rate.h"

/// Reading of what people type. Everything here takes the whole text or nothing: an empty result
/// says that the text is not such a value. Decimal points are points in every locale.
namespace kelmo::host {

std::string LowerCase(std::string_view text);
std::string_view Trimmed(std::string_view text);
std::vector<std::string_view> SplitAt(std::string_view text, char separator);

/// Finite decimal number: "-1", "0.5", ".5", "1e3".
std::optional<double> ParseNumber(std::string_view text);

/// "true", "on", "yes", "1" and their opposites, in any letter case.
std::optional<bool> ParseSwitch(std::string_view text);

/// 0xRRGGBB from "#RRGGBB", "#RGB", "0xRRGGBB", or one of the sixteen basic colour names of web
/// pages and "orange", "pink".
std::optional<int32_t> ParseColor(std::string_view text);
/// "#RRGGBB".
std::string ColorText(int32_t color);

/// A place in time, in the unit in which it was given.
struct Moment {
    enum class Unit { kSeconds, kFrames, kPercent };
    double amount = 0;
    Unit unit = Unit::kSeconds;

    /// As a frame, not rounded. 100 % is the last frame of `frames`, so that a change over 0 % to
    /// 100 % ends exactly with the picture.
    double InFrames(FrameRate rate, int64_t frames) const;
};

/// "2", "2s", "500ms", "50f", "50%", "1:30", "1:02:03.5"; never negative.
std::optional<Moment> ParseMoment(std::string_view text);

struct PixelSize {
    int width = 0;
    int height = 0;
};
inline constexpr int kLargestSide = 16384;
/// "1280x720", both sides at least 1. The upper limit is the caller's to check.
std::optional<PixelSize> ParseSize(std::string_view text);

/// "25", "30000/1001", "29.97": the decimal forms of the 1001 rates become exact.
std::optional<FrameRate> ParseFrameRate(std::string_view text);

}  // namespace kelmo::host
