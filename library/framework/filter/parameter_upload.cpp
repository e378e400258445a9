// SPDX-License-Identifier: GPL-3.0-or-later
#include "framework/filter/parameter_upload.h"

#include <algorithm>
#include <cmath>

#include "framework/filter/nle_opengl_filter.h"

namespace kelmo {

int32_t CurrentType(const NLEFilterParams& param) {
    return param.value.type != kParamNone ? param.value.type : param.type;
}

namespace {

double Number(const NLEParamValue& value, int32_t type) {
    switch (type) {
        case kParamBool:
            return value.AsBool() ? 1.0 : 0.0;
        case kParamDouble:
            return value.AsDouble();
        case kParamFloat:
            return value.AsFloat();
        case kParamInt:
            return value.AsInt();
        default:
            return 0.0;
    }
}

bool IsNumber(int32_t type) {
    return type == kParamBool || type == kParamDouble || type == kParamFloat || type == kParamInt;
}

int32_t NearestInt(double number) {
    if (std::isnan(number)) return 0;
    return static_cast<int32_t>(std::clamp(number, -2147483648.0, 2147483647.0));
}

}  // namespace

float CurrentNumber(const NLEFilterParams& param) {
    return static_cast<float>(Number(param.value, CurrentType(param)));
}

int32_t CurrentInt(const NLEFilterParams& param) {
    return NearestInt(Number(param.value, CurrentType(param)));
}

bool ConvertNumber(NLEParamValue& value, int32_t type) {
    if (value.type == type || value.type == kParamNone) return true;
    if (!IsNumber(value.type) || !IsNumber(type)) return false;
    const double number = Number(value, value.type);
    value.Put(uint64_t{0});
    value.type = type;
    switch (type) {
        case kParamBool:
            value.Put(static_cast<uint8_t>(number != 0.0));
            break;
        case kParamDouble:
            value.Put(number);
            break;
        case kParamFloat:
            value.Put(static_cast<float>(number));
            break;
        default:
            value.Put(NearestInt(number));
            break;
    }
    return true;
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
