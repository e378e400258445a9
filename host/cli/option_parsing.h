// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <CLI/CLI.hpp>

#include <optional>
#include <string>

#include "host/session/text_values.h"

namespace kelmo::host {

/// The validator without its words in the help text, where the option's own type name stands.
CLI::Validator Silent(CLI::Validator validator);

/// The value of an option; nothing for an empty text, which is an option that was not given. Throw
/// UsageError that names the option.
std::optional<PixelSize> SizeOption(const char* option, const std::string& text);
/// Of an option that has a default: an empty text is wrong, too.
PixelSize RequiredSize(const char* option, const std::string& text);
std::optional<FrameRate> RateOption(const char* option, const std::string& text);
std::optional<int32_t> ColorOption(const char* option, const std::string& text);
std::optional<Moment> MomentOption(const char* option, const std::string& text);

}  // namespace kelmo::host
