// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/session/description_registrar.h"

#include <fmt/format.h>

#include "host/session/text_values.h"

namespace kelmo::host {

namespace {

std::string TextOf(const char* text) {
    return text == nullptr ? std::string() : text;
}

/// A float without the digits that only its binary form has: 0.1f is to be listed as 0.1.
double Shortened(float value) {
    return ParseNumber(fmt::format("{}", value)).value_or(value);
}

/// "blur_radius", "blurRadius", "uBlurRadius" as people read them: "Blur radius".
std::string ReadableTitle(const std::string& name) {
    const auto isUpper = [](char c) { return c >= 'A' && c <= 'Z'; };
    const auto isLower = [](char c) { return c >= 'a' && c <= 'z'; };
    // The mark of a uniform.
    const bool marked = name.size() > 2 && name[0] == 'u' && (isUpper(name[1]) || name[1] == '_');
    std::string title;
    for (size_t i = marked ? 1 : 0; i < name.size(); ++i) {
        const char c = name[i];
        const bool gap = c == '_' || c == ' ' || c == '-';
        const bool begins = isUpper(c) && i > 0 && isLower(name[i - 1]);
        if ((gap || begins) && !title.empty() && title.back() != ' ') title += ' ';
        if (gap) continue;
        const bool alone = i + 1 >= name.size() || !isUpper(name[i + 1]);
        const bool lower = isUpper(c) && begins && alone && !title.empty();
        title += lower ? static_cast<char>(c - 'A' + 'a') : c;
    }
    while (!title.empty() && title.back() == ' ') title.pop_back();
    if (!title.empty() && isLower(title[0])) title[0] = static_cast<char>(title[0] - 'a' + 'A');
    return title.empty() ? name : title;
}

}  // namespace

ParameterDescription& DescriptionRegistrar::Add(int32_t index, const char* name,
                                                const char* display, ParameterKind kind) {
    const std::string key = TextOf(name);
    const bool usable = !key.empty() && effect.Parameter(key) == nullptr;
    ParameterDescription& parameter = usable ? effect.parameters.emplace_back() : dropped;
    parameter.index = index;
    parameter.name = key;
    parameter.display = TextOf(display);
    if (parameter.display.empty() || parameter.display == key) {
        parameter.display = ReadableTitle(key);
    }
    parameter.kind = kind;
    return parameter;
}

void DescriptionRegistrar::AddNumber(int32_t index, const char* name, const char* display,
                                     ParameterKind kind, double min, double max, double def,
                                     int32_t vis) {
    ParameterDescription& parameter = Add(index, name, display, kind);
    parameter.min = min;
    parameter.max = max;
    parameter.def = def;
    parameter.visible = vis != kParamHidden;
}

void DescriptionRegistrar::SetIdentity(const char* guid, const char* displayName) {
    effect.guid = TextOf(guid);
    effect.name = TextOf(displayName);
}

void DescriptionRegistrar::AddFloatParam(int32_t, int32_t index, const char* name,
                                         const char* display, float min, float max, float def,
                                         int32_t vis) {
    AddNumber(index, name, display, ParameterKind::kFloat, Shortened(min), Shortened(max),
              Shortened(def), vis);
}

void DescriptionRegistrar::AddIntParam(int32_t, int32_t index, const char* name,
                                       const char* display, int32_t min, int32_t max, int32_t def,
                                       int32_t, int32_t vis) {
    AddNumber(index, name, display, ParameterKind::kInteger, min, max, def, vis);
}

void DescriptionRegistrar::AddColorParam(int32_t, int32_t index, const char* name,
                                         const char* display, int32_t def, int32_t min, int32_t max,
                                         int32_t vis) {
    AddNumber(index, name, display, ParameterKind::kColor, min, max, def, vis);
}

void DescriptionRegistrar::AddCheckBoxParam(int32_t, int32_t index, const char* name,
                                            const char* display, int32_t min, int32_t max,
                                            int32_t def, int32_t vis) {
    AddNumber(index, name, display, ParameterKind::kCheckBox, min, max, def, vis);
}

void DescriptionRegistrar::AddStringParam(int32_t, int32_t index, const char* name,
                                          const char* display, const char*, int32_t) {
    Add(index, name, display, ParameterKind::kText);
}

void DescriptionRegistrar::AddGradientColorParam(int32_t, int32_t index, const char* name,
                                                 const char* display, const QorValue* def,
                                                 int32_t) {
    ParameterDescription& parameter = Add(index, name, display, ParameterKind::kGradient);
    if (def != nullptr && def->type == kHostText) parameter.defaultText = TextOf(def->s);
}

void DescriptionRegistrar::AddDoubleParam(int32_t, int32_t index, const char* name,
                                          const char* display, double min, double max, double def,
                                          int32_t vis) {
    AddNumber(index, name, display, ParameterKind::kDouble, min, max, def, vis);
}

void DescriptionRegistrar::AddPalacesParam(int32_t, int32_t index, const char* name,
                                           const char* display, int32_t min, int32_t max,
                                           int32_t def, int32_t) {
    AddNumber(index, name, display, ParameterKind::kPalace, min, max, def, kParamVisible);
}

void DescriptionRegistrar::AddListMaskParam(int32_t, int32_t index, const char* name,
                                            const char* display, const char*, int32_t) {
    Add(index, name, display, ParameterKind::kListMask);
}

void DescriptionRegistrar::AddListMosaicParam(int32_t, int32_t index, const char* name,
                                              const char* display, int32_t min, int32_t max,
                                              int32_t def, int32_t) {
    AddNumber(index, name, display, ParameterKind::kListMosaic, min, max, def, kParamVisible);
}

void DescriptionRegistrar::AddColorStartParam(int32_t, int32_t index, const char* name,
                                              const char* display, int32_t min, int32_t max,
                                              int32_t def, int32_t vis) {
    AddNumber(index, name, display, ParameterKind::kColorStart, min, max, def, vis);
}

void DescriptionRegistrar::AddColorEndParam(int32_t, int32_t index, const char* name,
                                            const char* display, int32_t min, int32_t max,
                                            int32_t def, int32_t vis) {
    AddNumber(index, name, display, ParameterKind::kColorEnd, min, max, def, vis);
}

void DescriptionRegistrar::AddMult100Param(int32_t, int32_t index, const char* name,
                                           const char* display, float min, float max, float def,
                                           int32_t vis) {
    AddNumber(index, name, display, ParameterKind::kPercent, Shortened(min), Shortened(max),
              Shortened(def), vis);
}

}  // namespace kelmo::host
