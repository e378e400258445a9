// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <string_view>

namespace kelmo {

/// Words that GLSL keeps for itself and that yet are good names for a parameter. A shader declares
/// such a parameter with an underscore behind it ("filter_"); everybody else speaks of it by its
/// plain name.
inline constexpr std::string_view kReservedNames[] = {
    "active", "cast",      "common",   "default", "discard", "external", "filter",
    "fixed",  "flat",      "half",     "input",   "inline",  "long",     "output",
    "packed", "partition", "public",   "sample",  "short",   "smooth",   "static",
    "superp", "switch",    "template", "this",    "union",   "using",    "volatile",
};

/// The name by which the values of a shader's uniform arrive.
inline std::string_view PlainUniformName(std::string_view declared) {
    if (declared.size() < 2 || declared.back() != '_') return declared;
    const std::string_view plain = declared.substr(0, declared.size() - 1);
    const bool reserved = std::find(std::begin(kReservedNames), std::end(kReservedNames), plain) !=
                          std::end(kReservedNames);
    return reserved ? plain : declared;
}

}  // namespace kelmo
