// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/cli/effect_json.h"

#include <cstdio>

#include <fmt/format.h>

#include "host/cli/command_line.h"
#include "host/session/text_values.h"

namespace kelmo::host {

namespace {

using Json = nlohmann::ordered_json;

/// Whole numbers without a point.
Json Number(const ParameterDescription& parameter, double value) {
    if (parameter.IsWhole()) return static_cast<int64_t>(value);
    return value;
}

Json ParameterJson(const ParameterDescription& parameter) {
    Json json;
    json["name"] = parameter.name;
    json["display"] = parameter.display;
    json["kind"] = KindName(parameter.kind);
    if (parameter.IsColor()) {
        json["default"] = ColorText(static_cast<int32_t>(parameter.def));
    } else if (parameter.IsText()) {
        json["default"] = parameter.defaultText;
    } else {
        json["default"] = Number(parameter, parameter.def);
    }
    if (parameter.HasRange()) {
        json["min"] = Number(parameter, parameter.min);
        json["max"] = Number(parameter, parameter.max);
    }
    json["visible"] = parameter.visible;
    return json;
}

}  // namespace

nlohmann::ordered_json EffectSummary(const EffectDescription& effect) {
    return {{"guid", effect.guid}, {"name", effect.name}, {"type", TypeName(effect.Type())}};
}

nlohmann::ordered_json EffectDetails(const EffectDescription& effect) {
    Json json = EffectSummary(effect);
    json["inputs"] = effect.Type() == EffectType::kTransition ? 2 : 1;
    json["audio"] = effect.WantsAudio();
    json["flags"] = effect.flags;
    json["parameters"] = Json::array();
    for (const ParameterDescription& parameter : effect.parameters) {
        json["parameters"].push_back(ParameterJson(parameter));
    }
    return json;
}

std::string DefaultText(const ParameterDescription& parameter) {
    if (parameter.IsColor()) return ColorText(static_cast<int32_t>(parameter.def));
    if (parameter.IsText()) return parameter.defaultText;
    if (parameter.kind == ParameterKind::kCheckBox) return parameter.def != 0 ? "on" : "off";
    return fmt::format("{:g}", parameter.def);
}

std::string RangeText(const ParameterDescription& parameter) {
    if (parameter.kind == ParameterKind::kCheckBox) return "on, off";
    if (parameter.IsColor()) return "#RRGGBB";
    if (!parameter.HasRange()) return "";
    return fmt::format("{:g} .. {:g}", parameter.min, parameter.max);
}

void PrintJson(const nlohmann::ordered_json& content) {
    Json document = {{"schema", kJsonSchema}};
    document.update(content);
    // Names come from files that anybody may write: broken UTF-8 must not stop the listing.
    const std::string text = document.dump(2, ' ', false, Json::error_handler_t::replace);
    std::printf("%s\n", text.c_str());
}

}  // namespace kelmo::host
