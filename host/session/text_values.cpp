// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/session/text_values.h"

#include <array>
#include <charconv>
#include <cmath>
#include <numeric>
#include <utility>

#include <fmt/format.h>

namespace kelmo::host {

namespace {

constexpr std::array<std::pair<std::string_view, int32_t>, 18> kColorNames = {{
    {"black", 0x000000},
    {"silver", 0xC0C0C0},
    {"gray", 0x808080},
    {"white", 0xFFFFFF},
    {"maroon", 0x800000},
    {"red", 0xFF0000},
    {"purple", 0x800080},
    {"fuchsia", 0xFF00FF},
    {"green", 0x008000},
    {"lime", 0x00FF00},
    {"olive", 0x808000},
    {"yellow", 0xFFFF00},
    {"navy", 0x000080},
    {"blue", 0x0000FF},
    {"teal", 0x008080},
    {"aqua", 0x00FFFF},
    {"orange", 0xFFA500},
    {"pink", 0xFFC0CB},
}};

template <typename T>
std::optional<T> ParseWhole(std::string_view text, int base) {
    T value{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value, base);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return value;
}

/// Takes `suffix` off the end of the text, if it stands there.
bool TakeSuffix(std::string_view& text, std::string_view suffix) {
    if (text.size() <= suffix.size() || text.substr(text.size() - suffix.size()) != suffix) {
        return false;
    }
    text.remove_suffix(suffix.size());
    return true;
}

/// Hours, minutes and seconds; every part but the first is below 60.
std::optional<double> ParseClock(std::string_view text) {
    const std::vector<std::string_view> parts = SplitAt(text, ':');
    if (parts.size() > 3) return std::nullopt;
    double seconds = 0;
    for (size_t i = 0; i < parts.size(); ++i) {
        const std::optional<double> part = ParseNumber(parts[i]);
        const bool last = i + 1 == parts.size();
        if (!part || *part < 0 || (i > 0 && *part >= 60)) return std::nullopt;
        if (!last && *part != std::floor(*part)) return std::nullopt;
        seconds = seconds * 60 + *part;
    }
    return seconds;
}

}  // namespace

std::string LowerCase(std::string_view text) {
    std::string lower(text);
    for (char& c : lower) {
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    }
    return lower;
}

std::string_view Trimmed(std::string_view text) {
    const size_t first = text.find_first_not_of(" \t\r\n");
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t\r\n") - first + 1);
}

std::vector<std::string_view> SplitAt(std::string_view text, char separator) {
    std::vector<std::string_view> parts;
    for (size_t at = text.find(separator); at != std::string_view::npos;
         at = text.find(separator)) {
        parts.push_back(text.substr(0, at));
        text.remove_prefix(at + 1);
    }
    parts.push_back(text);
    return parts;
}

std::optional<double> ParseNumber(std::string_view text) {
    if (!text.empty() && text.front() == '+') text.remove_prefix(1);
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    if (!std::isfinite(value)) return std::nullopt;
    return value;
}

std::optional<bool> ParseSwitch(std::string_view text) {
    const std::string word = LowerCase(text);
    if (word == "true" || word == "on" || word == "yes" || word == "1") return true;
    if (word == "false" || word == "off" || word == "no" || word == "0") return false;
    return std::nullopt;
}

std::optional<int32_t> ParseColor(std::string_view text) {
    const std::string word = LowerCase(text);
    for (const auto& [name, value] : kColorNames) {
        if (word == name) return value;
    }
    std::string_view digits = word;
    const bool hash = digits.substr(0, 1) == "#";
    if (!hash && digits.substr(0, 2) != "0x") return std::nullopt;
    digits.remove_prefix(hash ? 1 : 2);
    const std::optional<uint32_t> value = ParseWhole<uint32_t>(digits, 16);
    if (!value) return std::nullopt;
    if (digits.size() == 6) return static_cast<int32_t>(*value);
    if (digits.size() != 3 || !hash) return std::nullopt;
    // One digit a channel stands for two equal ones.
    const uint32_t spread = (*value & 0xF00) << 8 | (*value & 0x0F0) << 4 | (*value & 0x00F);
    return static_cast<int32_t>(spread * 0x11);
}

std::string ColorText(int32_t color) {
    return fmt::format("#{:06X}", static_cast<uint32_t>(color) & 0xFFFFFF);
}

double Moment::InFrames(FrameRate rate, int64_t frames) const {
    switch (unit) {
        case Unit::kFrames:
            return amount;
        case Unit::kPercent:
            return frames > 1 ? amount / 100.0 * static_cast<double>(frames - 1) : 0.0;
        case Unit::kSeconds:
            break;
    }
    return amount * rate.PerSecond();
}

std::optional<Moment> ParseMoment(std::string_view text) {
    text = Trimmed(text);
    if (text.find(':') != std::string_view::npos) {
        const std::optional<double> seconds = ParseClock(text);
        if (!seconds) return std::nullopt;
        return Moment{*seconds, Moment::Unit::kSeconds};
    }
    Moment moment;
    double scale = 1;
    if (TakeSuffix(text, "ms")) {
        scale = 0.001;
    } else if (TakeSuffix(text, "s")) {
        scale = 1;
    } else if (TakeSuffix(text, "f")) {
        moment.unit = Moment::Unit::kFrames;
    } else if (TakeSuffix(text, "%")) {
        moment.unit = Moment::Unit::kPercent;
    }
    const std::optional<double> amount = ParseNumber(text);
    if (!amount || *amount < 0) return std::nullopt;
    moment.amount = *amount * scale;
    return moment;
}

std::optional<PixelSize> ParseSize(std::string_view text) {
    const std::vector<std::string_view> sides = SplitAt(text, 'x');
    if (sides.size() != 2) return std::nullopt;
    const std::optional<int> width = ParseWhole<int>(sides[0], 10);
    const std::optional<int> height = ParseWhole<int>(sides[1], 10);
    if (!width || !height || *width < 1 || *height < 1) return std::nullopt;
    return PixelSize{*width, *height};
}

std::optional<FrameRate> ParseFrameRate(std::string_view text) {
    const std::vector<std::string_view> parts = SplitAt(text, '/');
    if (parts.size() == 2) {
        const std::optional<int> above = ParseWhole<int>(parts[0], 10);
        const std::optional<int> below = ParseWhole<int>(parts[1], 10);
        if (!above || !below || *above < 1 || *below < 1) return std::nullopt;
        return FrameRate{*above, *below};
    }
    const std::optional<double> rate = ParseNumber(text);
    if (parts.size() != 1 || !rate || *rate < 0.001 || *rate > 100000) return std::nullopt;
    // 23.976, 29.97, 59.94...: 1001 is the broadcast denominator, told by two decimals.
    const double whole = std::ceil(*rate);
    if (whole != *rate && std::fabs(*rate - whole * 1000 / 1001) < 0.005) {
        return FrameRate{static_cast<int>(whole) * 1000, 1001};
    }
    const int thousandths = static_cast<int>(std::lround(*rate * 1000));
    const int common = std::gcd(thousandths, 1000);
    return FrameRate{thousandths / common, 1000 / common};
}

}  // namespace kelmo::host
