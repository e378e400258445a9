// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/cli/option_parsing.h"

#include <fmt/format.h>

#include "host/session/host_error.h"

namespace kelmo::host {

namespace {

constexpr const char* kNoSize = "is no size; write WIDTHxHEIGHT, like 1280x720";

template <typename T>
std::optional<T> Checked(const char* option, const std::string& text, std::optional<T> value,
                         const char* advice) {
    if (text.empty() || value) return value;
    throw UsageError(fmt::format("{}: \"{}\" {}", option, text, advice));
}

}  // namespace

CLI::Validator Silent(CLI::Validator validator) {
    return validator.description("");
}

std::optional<PixelSize> SizeOption(const char* option, const std::string& text) {
    const auto size = Checked(option, text, ParseSize(text), kNoSize);
    if (size && (size->width > kLargestSide || size->height > kLargestSide)) {
        throw UsageError(
            fmt::format("{}: {} is too large; sides go up to {}", option, text, kLargestSide));
    }
    return size;
}

PixelSize RequiredSize(const char* option, const std::string& text) {
    if (text.empty()) throw UsageError(fmt::format("{}: \"\" {}", option, kNoSize));
    return *SizeOption(option, text);
}

std::optional<FrameRate> RateOption(const char* option, const std::string& text) {
    return Checked(option, text, ParseFrameRate(text),
                   "is no frame rate; write 25, 29.97 or 30000/1001");
}

std::optional<int32_t> ColorOption(const char* option, const std::string& text) {
    return Checked(option, text, ParseColor(text),
                   "is no colour; write #RRGGBB or a name like red");
}

std::optional<Moment> MomentOption(const char* option, const std::string& text) {
    return Checked(option, text, ParseMoment(text), "is no time; write 2s, 1:30, 50f or 50%");
}

}  // namespace kelmo::host
