// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/image/rgb_curve_effect.h"

#include "effects/image/rgb_curve_params.h"
#include "framework/filter/effect_registry.h"
#include "framework/textures/material_binding.h"

namespace kelmo {
namespace {

const bool kRegistered =
    RegisterEffect("NLEOpenglRGBCurveEffect", MakeEffect<NLEOpenglRGBCurveEffect>,
                   {"0FDB786D-A9A9-4ED7-9964-AC6954FB441A"});

}  // namespace

NLEOpenglRGBCurveEffect::NLEOpenglRGBCurveEffect(std::shared_ptr<NLEFilterInfo> filterInfo)
    : NLEOpenGLCombineFilter(std::move(filterInfo)),
      lookTable(subFilters.Add(kCurveLookTableGuid)) {}

int32_t NLEOpenglRGBCurveEffect::InitEffect() {
    subFilters.InitEffects();
    return NLEOpenGLCombineFilter::InitEffect();
}

int32_t NLEOpenglRGBCurveEffect::CreateEffect(int32_t newWidth, int32_t newHeight,
                                              int32_t newStride) {
    if (!MakeEngineEffect(newWidth, newHeight, newStride)) return kFilterFailed;
    InitParams();
    engine->AddInputTexture(width, height, stride, true);
    for (int channel = 0; channel < kCurveChannels; ++channel) {
        engine->AddInputTexture(kCurveStripWidth, 1, kCurveStripStride, true);
    }
    if (info->transition) engine->AddInputTexture(width, height, stride, true);
    for (int32_t slot = 0; slot < info->textureCount; ++slot) {
        engine->AddInputTexture(width, height, stride, false);
    }
    DeclareTimeUniforms();
    DeclareParams(*engine, params);
    return BuildProgram();
}

bool NLEOpenglRGBCurveEffect::HandOverCurves() {
    bool complete = true;
    const auto handOver = [this](const char* name) {
        const NLEFilterParams* const param = FindParam(name);
        if (!param) return false;
        lookTable->SetParam(name, kParamText, param->value);
        return param->value.AsText()[0] != 0;
    };
    for (const CurveParamNames& names : kCurveParams) {
        complete = handOver(names.knots) && complete;
        handOver(names.firstControls);
        handOver(names.secondControls);
    }
    return complete;
}

int32_t NLEOpenglRGBCurveEffect::DoEffect(const FrameRecord& second, const FrameRecord& first,
                                          FrameRecord& out, int32_t frameWidth, int32_t frameHeight,
                                          int32_t frameStride) {
    if (!engine || !lookTable || !HandOverCurves()) return kFilterFailed;
    FrameRecord strips = FrameRecord::TargetLess(frameWidth, frameHeight, frameStride);
    if (lookTable->DoEffect(second, first, strips, frameWidth, frameHeight, frameStride) !=
        kFilterOk) {
        return kFilterFailed;
    }
    const FrameTime time = Time();
    UploadTimeAndLength(*engine, time);
    int32_t slot = 0;
    SetInputFrame(slot, first);
    SetInputFrame(slot, second);
    BindMaterialAtTime(*engine, slot, textureFrames.get(), texDescs.get(), time.position);
    for (int channel = 0; channel < kCurveChannels; ++channel) {
        engine->SetInputTexture(slot++, lookTable->GetTargetFrame(channel), kCurveStripWidth, 1,
                                kCurveStripStride);
    }
    return RenderTo(out);
}

}  // namespace kelmo
