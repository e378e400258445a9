// SPDX-License-Identifier: GPL-3.0-or-later
#include "plugin/parameter_publication.h"

namespace kelmo {

namespace {

constexpr int32_t kNoParent = -1;
constexpr int32_t kStep = 1;

QorVisibility VisibilityOf(const NLEFilterParams& param) {
    return param.uiType == kUiNoShow ? kParamHidden : kParamVisible;
}

void PublishFloat(const NLEFilterParams& param, int32_t index, const char* name,
                  QorEffectRegistrar& registrar) {
    const float min = param.minValue.AsFloat();
    const float max = param.maxValue.AsFloat();
    const float def = param.defaultValue.AsFloat();
    if (param.uiType == kUiMult100) {
        registrar.AddMult100Param(kNoParent, index, name, name, min, max, def, kParamVisible);
    } else {
        registrar.AddFloatParam(kNoParent, index, name, name, min, max, def, VisibilityOf(param));
    }
}

void PublishInt(const NLEFilterParams& param, int32_t index, const char* name,
                QorEffectRegistrar& registrar) {
    const int32_t min = param.minValue.AsInt();
    const int32_t max = param.maxValue.AsInt();
    const int32_t def = param.defaultValue.AsInt();
    switch (param.uiType) {
        case kUiPlain:
        case kUiNoShow:
            registrar.AddIntParam(kNoParent, index, name, name, min, max, def, kStep,
                                  VisibilityOf(param));
            break;
        case kUiColor:
            registrar.AddColorParam(kNoParent, index, name, name, def, min, max, kParamVisible);
            break;
        case kUiCheckBox:
            registrar.AddCheckBoxParam(kNoParent, index, name, name, min, max, def, kParamVisible);
            break;
        case kUi9Palaces:
            registrar.AddPalacesParam(kNoParent, index, name, name, min, max, def, 0);
            break;
        case kUiListMosaic:
            registrar.AddListMosaicParam(kNoParent, index, name, name, min, max, def, 0);
            break;
        case kUiColorStart:
            registrar.AddColorStartParam(kNoParent, index, name, name, min, max, def,
                                         kParamVisible);
            break;
        case kUiColorEnd:
            registrar.AddColorEndParam(kNoParent, index, name, name, min, max, def, kParamVisible);
            break;
        default:
            break;
    }
}

void PublishText(const NLEFilterParams& param, int32_t index, const char* name,
                 QorEffectRegistrar& registrar) {
    if (param.uiType == kUiListMask) {
        registrar.AddListMaskParam(kNoParent, index, name, name, nullptr, 0);
    } else if (param.uiType == kUiGradientColor) {
        QorValue def;
        def.type = kHostText;
        def.s = param.defaultValue.text.empty() ? param.defaultValue.AsText()
                                                : param.defaultValue.text.c_str();
        registrar.AddGradientColorParam(kNoParent, index, name, name, &def, 0);
    } else {
        registrar.AddStringParam(kNoParent, index, name, name, nullptr, 0);
    }
}

}  // namespace

void PublishParam(const NLEFilterParams& param, int32_t index, QorEffectRegistrar& registrar) {
    const char* const name = param.name.c_str();
    switch (param.type) {
        case kParamDouble:
            registrar.AddDoubleParam(kNoParent, index, name, name, param.minValue.AsDouble(),
                                     param.maxValue.AsDouble(), param.defaultValue.AsDouble(),
                                     VisibilityOf(param));
            break;
        case kParamFloat:
            PublishFloat(param, index, name, registrar);
            break;
        case kParamInt:
            PublishInt(param, index, name, registrar);
            break;
        case kParamText:
            PublishText(param, index, name, registrar);
            break;
        case kParamPointer:
            registrar.AddStringParam(kNoParent, index, name, name, nullptr, 0);
            break;
        default:
            break;
    }
}

void PublishAstralParams(QorEffectRegistrar& registrar) {
    registrar.AddFloatParam(kNoParent, 0, "density", "density", 30.0F, 100.0F, 60.0F,
                            kParamVisible);
    registrar.AddFloatParam(kNoParent, 1, "size", "size", 10.0F, 100.0F, 50.0F, kParamVisible);
    registrar.AddIntParam(kNoParent, 2, "alpha", "alpha", 0, 100, 100, kStep, kParamVisible);
}

}  // namespace kelmo
