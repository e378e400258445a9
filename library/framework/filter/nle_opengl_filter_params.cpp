// SPDX-License-Identifier: GPL-3.0-or-later
// The parameters of a filter: setting, finding, remembering what is missing.
#include <string_view>
#include <utility>

#include "framework/filter/nle_opengl_filter.h"

namespace kelmo {

NLEFilterParams* NLEOpenGLFilter::ParamNamed(const char* name) const {
    const std::string_view wanted(name);
    for (const auto& param : params) {
        if (param->name == wanted) return param.get();
    }
    return nullptr;
}

int32_t NLEOpenGLFilter::SetParam(const char* name, int32_t type, NLEParamValue value) {
    if (NLEFilterParams* const known = ParamNamed(name)) {
        known->SetValue(value);
        return 0;
    }
    auto added = std::make_shared<NLEFilterParams>();
    added->name = name;
    added->alias = name;
    added->type = type;
    added->SetValue(value);
    params.push_back(std::move(added));
    return 1;
}

void NLEOpenGLFilter::RequestParam(const char* name) {
    const std::string_view wanted(name);
    if (requestedParams.find(wanted) == requestedParams.end()) requestedParams.emplace(wanted);
}

const NLEFilterParams* NLEOpenGLFilter::FindParam(const char* name) {
    const std::string_view wanted(name);
    // The last of equal names, as copying on each match would leave it.
    for (auto param = params.rbegin(); param != params.rend(); ++param) {
        if ((*param)->name == wanted) return param->get();
    }
    RequestParam(name);
    return nullptr;
}

bool NLEOpenGLFilter::FindParamValue(const char* name, NLEParamValue& value) {
    const NLEFilterParams* const param = FindParam(name);
    if (param) value = param->value;
    return param != nullptr;
}

bool NLEOpenGLFilter::FindParamRange(const char* name, NLEParamValue& value, NLEParamValue& minimum,
                                     NLEParamValue& maximum) {
    const NLEFilterParams* const param = FindParam(name);
    if (!param) return false;
    value = param->value;
    param->ParamLimits(minimum, maximum);
    return true;
}

bool NLEOpenGLFilter::FindFloat(const char* name, float& value) {
    const NLEFilterParams* const param = FindParam(name);
    if (param) value = CurrentNumber(*param);
    return param != nullptr;
}

bool NLEOpenGLFilter::FindInt(const char* name, int32_t& value) {
    const NLEFilterParams* const param = FindParam(name);
    if (param) value = CurrentInt(*param);
    return param != nullptr;
}

float NLEOpenGLFilter::FloatOr(const char* name, float fallback) {
    FindFloat(name, fallback);
    return fallback;
}

int32_t NLEOpenGLFilter::IntOr(const char* name, int32_t fallback) {
    FindInt(name, fallback);
    return fallback;
}

void NLEOpenGLFilter::UploadParams() {
    if (engine) kelmo::UploadParams(*engine, params);
}

}  // namespace kelmo
