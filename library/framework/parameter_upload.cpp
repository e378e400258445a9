// SPDX-License-Identifier: GPL-3.0-or-later
#include "framework/parameter_upload.h"

#include <algorithm>
#include <cmath>

#include "framework/nle_opengl_filter.h"

namespace kelmo {

int32_t CurrentType(const NLEFilterParams& param) {
    return param.value.type != kParamNone ? param.value.type : param.type;
}

namespace {

double Number(const NLEFilterParams& param) {
    switch (CurrentType(param)) {
        case kParamBool:
            return param.value.AsBool() ? 1.0 : 0.0;
        case kParamDouble:
            return param.value.AsDouble();
        case kParamFloat:
            return param.value.AsFloat();
        case kParamInt:
            return param.value.AsInt();
        default:
            return 0.0;
    }
}

}  // namespace

float CurrentNumber(const NLEFilterParams& param) {
    return static_cast<float>(Number(param));
}

int32_t CurrentInt(const NLEFilterParams& param) {
    const double number = Number(param);
    if (std::isnan(number)) return 0;
    return static_cast<int32_t>(std::clamp(number, -2147483648.0, 2147483647.0));
}

void DeclareParams(NLEOpenGLEngineEffect& engine, const FilterParamList& params) {
    for (const auto& param : params) {
        switch (CurrentType(*param)) {
            case kParamFloat:
                engine.AddUniformFloat(param->name.c_str(), param->value.AsFloat());
                break;
            case kParamInt:
                engine.AddUniformInt(param->name.c_str(), param->value.AsInt());
                break;
            default:
                break;
        }
    }
}

void UploadParam(NLEOpenGLEngineEffect& engine, const NLEFilterParams& param) {
    switch (CurrentType(param)) {
        case kParamDouble:
            engine.SetUniformFloat(param.name.c_str(), static_cast<float>(param.value.AsDouble()));
            break;
        case kParamFloat:
            engine.SetUniformFloat(param.name.c_str(), param.value.AsFloat());
            break;
        case kParamInt:
            engine.SetUniformInt(param.name.c_str(), param.value.AsInt());
            break;
        default:
            break;
    }
}

void UploadParams(NLEOpenGLEngineEffect& engine, const FilterParamList& params) {
    for (const auto& param : params) UploadParam(engine, *param);
}

void HandOverParams(const FilterParamList& params, NLEOpenGLFilter& subFilter) {
    for (const auto& param : params) {
        subFilter.SetParam(param->name.c_str(), CurrentType(*param), param->value);
    }
}

}  // namespace kelmo
