// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/scene/particles/sand_storm_effect.h"

#include <utility>

#include "framework/filter/effect_registry.h"
#include "framework/filter/filter_guids.h"
#include "framework/textures/material_binding.h"

namespace kelmo {
namespace {

const bool kRegistered =
    RegisterEffect("NLEOpenGLSandStormEffect", MakeEffect<NLEOpenGLSandStormEffect>,
                   {"SandStorm", "18BA37E8-56EC-648C-33FC-12FEEFE3A151"});

constexpr const char* kTextIsUpdate = "TextIsUpdate";
constexpr float kSecondsBetweenLayers = 2.0F;
constexpr int32_t kOwnInputs = 4;

}  // namespace

NLEOpenGLSandStormEffect::NLEOpenGLSandStormEffect(std::shared_ptr<NLEFilterInfo> filterInfo)
    : NLEOpenGLFilter(std::move(filterInfo)),
      layerA(layers.Add(kParticleEmitGuid)),
      layerB(layers.Add(kParticleEmitGuid)),
      eclosion(feathers.AddAs<NLEOpenGLBeamEclosionEffect>(kBeamEclosionGuid)) {
    needCpuFrame = 1;
}

int32_t NLEOpenGLSandStormEffect::InitEffect() {
    layers.InitEffects();
    feathers.InitEffects();
    return NLEOpenGLFilter::InitEffect();
}

int32_t NLEOpenGLSandStormEffect::Resize(int32_t newWidth, int32_t newHeight, int32_t newStride) {
    const WorkingSize size = WorkingSize::For(newWidth, newHeight);
    feathers.Resize(size.width, size.height, newStride);
    layers.Resize(newWidth, newHeight, newStride);
    return NLEOpenGLFilter::Resize(newWidth, newHeight, newStride);
}

int32_t NLEOpenGLSandStormEffect::InitParams() {
    NLEParamValue ignored;
    FindParamValue(kTextIsUpdate, ignored);  // the host is asked for it
    for (auto declared = static_cast<int32_t>(inputs.size()); declared < kOwnInputs; ++declared) {
        engine->AddInputTexture(width, height, stride, true);
    }
    return kFilterOk;
}

void NLEOpenGLSandStormEffect::HandOver() {
    HandOverParams(params, *layerA);
    HandOverParams(params, *layerB);
    if (const NLEFilterParams* width = FindParam("uEclosion")) {
        eclosion->SetParam("uEclosion", kParamInt, NLEParamValue::Int(CurrentInt(*width)));
    }
    if (IntOr(kTextIsUpdate, 0) != 0) SetParam(kTextIsUpdate, kParamInt, NLEParamValue::Int(0));
    UploadParams();
}

int32_t NLEOpenGLSandStormEffect::DoEffect(const FrameRecord&, const FrameRecord& first,
                                           FrameRecord& out, int32_t frameWidth,
                                           int32_t frameHeight, int32_t frameStride) {
    if (!engine || !layerA || !layerB || !eclosion) return kFilterFailed;
    HandOver();
    UploadGlobalTime(*engine, Time());
    const auto run = [&](NLEOpenGLFilter& stage) {
        return RunSubFilter(stage, *this, {}, first, frameWidth, frameHeight, frameStride);
    };
    const FrameRecord near = run(*layerA);
    layerB->SetParam("uTimeDifference", kParamFloat, NLEParamValue::Float(kSecondsBetweenLayers));
    const FrameRecord far = run(*layerB);
    const WorkingSize size = WorkingSize::For(frameWidth, frameHeight);
    eclosion->SetParam("uViewSizeWidth", kParamFloat,
                       NLEParamValue::Float(static_cast<float>(size.width)));
    eclosion->SetParam("uViewSizeHeight", kParamFloat,
                       NLEParamValue::Float(static_cast<float>(size.height)));
    eclosion->inputOverride = TextureReference(near);
    const FrameRecord feathered = run(*eclosion);
    int32_t slot = 0;
    SetInputFrame(slot, first);
    for (const FrameRecord& picture : {near, far, feathered}) {
        engine->SetInputTexture(slot++, picture, frameWidth, frameHeight, frameStride);
    }
    BindFirstMaterial(*engine, slot, textureFrames.get());
    return RenderTo(out);
}

}  // namespace kelmo
