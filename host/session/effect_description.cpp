// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/session/effect_description.h"

#include <algorithm>

namespace kelmo::host {

const char* KindName(ParameterKind kind) {
    switch (kind) {
        case ParameterKind::kFloat:
            return "float";
        case ParameterKind::kDouble:
            return "double";
        case ParameterKind::kPercent:
            return "percent";
        case ParameterKind::kInteger:
            return "int";
        case ParameterKind::kColor:
            return "color";
        case ParameterKind::kColorStart:
            return "color start";
        case ParameterKind::kColorEnd:
            return "color end";
        case ParameterKind::kCheckBox:
            return "check box";
        case ParameterKind::kPalace:
            return "place";
        case ParameterKind::kListMosaic:
            return "mosaic list";
        case ParameterKind::kText:
            return "text";
        case ParameterKind::kListMask:
            return "mask list";
        case ParameterKind::kGradient:
            return "gradient";
    }
    return "";
}

bool ParameterDescription::IsColor() const {
    return kind == ParameterKind::kColor || kind == ParameterKind::kColorStart ||
           kind == ParameterKind::kColorEnd;
}

bool ParameterDescription::IsText() const {
    return kind == ParameterKind::kText || kind == ParameterKind::kListMask ||
           kind == ParameterKind::kGradient;
}

bool ParameterDescription::IsWhole() const {
    return ValueType() == kHostInt;
}

int32_t ParameterDescription::ValueType() const {
    if (IsText()) return kHostText;
    if (kind == ParameterKind::kDouble) return kHostDouble;
    if (kind == ParameterKind::kFloat || kind == ParameterKind::kPercent) return kHostFloat;
    return kHostInt;
}

const char* TypeName(EffectType type) {
    switch (type) {
        case EffectType::kTransition:
            return "transition";
        case EffectType::kText:
            return "text";
        case EffectType::kFilter:
            break;
    }
    return "filter";
}

EffectType EffectDescription::Type() const {
    if ((flags & kFlagTwoInputs) != 0) return EffectType::kTransition;
    return textKind != 0 ? EffectType::kText : EffectType::kFilter;
}

const ParameterDescription* EffectDescription::Parameter(std::string_view parameterName) const {
    const auto found = std::find_if(parameters.begin(), parameters.end(),
                                    [&](const auto& p) { return p.name == parameterName; });
    return found == parameters.end() ? nullptr : &*found;
}

}  // namespace kelmo::host
