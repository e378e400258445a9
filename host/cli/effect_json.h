// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <nlohmann/json.hpp>

#include "host/session/effect_description.h"

namespace kelmo::host {

/// Guid, name and type: an element of `list --json`.
nlohmann::ordered_json EffectSummary(const EffectDescription& effect);

/// The summary, whether it hears sound, and its parameters: `info --json` without the schema.
nlohmann::ordered_json EffectDetails(const EffectDescription& effect);

/// Default and range of a parameter as words, as `info` prints them.
std::string DefaultText(const ParameterDescription& parameter);
std::string RangeText(const ParameterDescription& parameter);

/// Prints a document with `"schema": 1` in front, followed by a line end.
void PrintJson(const nlohmann::ordered_json& content);

}  // namespace kelmo::host
