// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/human_memory/background_burnning_effect.h"

#include <utility>

#include "framework/filter/effect_registry.h"
#include "framework/filter/filter_guids.h"
#include "framework/textures/material_binding.h"

namespace kelmo {
namespace {

const bool kRegistered = RegisterEffect(
    "NLEOpenGLBackGroundBurnningEffect", MakeEffect<NLEOpenGLBackGroundBurnningEffect>,
    {"BackGroundBurnning", "D7EA3285-2A8F-79E0-26A4-F41DBF2AE83E"});

}  // namespace

NLEOpenGLBackGroundBurnningEffect::NLEOpenGLBackGroundBurnningEffect(
    std::shared_ptr<NLEFilterInfo> filterInfo)
    : NLEOpenGLCombineFilter(std::move(filterInfo)),
      afterimageFilter(
          stages.AddAs<NLEOpenGLBackGroundAfterimageEffect>(kBackGroundAfterimageGuid)),
      eclosionFilter(stages.AddAs<NLEOpenGLBeamEclosionEffect>(kBeamEclosionGuid)) {
    needCpuFrame = 1;
    if (afterimageFilter) afterimageFilter->KeepMask();
}

int32_t NLEOpenGLBackGroundBurnningEffect::InitParams() {
    engine->AddUniformFloat("uTime", 0.0F);
    return kFilterOk;
}

int32_t NLEOpenGLBackGroundBurnningEffect::InitEffect() {
    stages.InitEffects();
    // The trail alone: a feathered clip helps nobody.
    if (afterimageFilter) {
        afterimageFilter->SetParam("showSrc", kParamInt, NLEParamValue::Int(0));
    }
    return NLEOpenGLCombineFilter::InitEffect();
}

int32_t NLEOpenGLBackGroundBurnningEffect::Resize(int32_t newWidth, int32_t newHeight,
                                                  int32_t newStride) {
    stages.Resize(WorkingSize::For(newWidth, newHeight));
    return NLEOpenGLCombineFilter::Resize(newWidth, newHeight, newStride);
}

void NLEOpenGLBackGroundBurnningEffect::PrepareFeathering(int32_t frameWidth, int32_t frameHeight) {
    if (!eclosionFilter) return;
    const WorkingSize size = WorkingSize::For(frameWidth, frameHeight);
    const std::pair<const char*, float> values[] = {
        {"uBoundLeftX", 0.0F},
        {"uBoundLeftY", 0.0F},
        {"uBoundRightX", 1.0F},
        {"uBoundRightY", 1.0F},
        {"uViewSizeWidth", static_cast<float>(size.width)},
        {"uViewSizeHeight", static_cast<float>(size.height)}};
    for (const auto& [name, value] : values) {
        eclosionFilter->SetParam(name, kParamFloat, NLEParamValue::Float(value));
    }
    int32_t radius = 0;
    if (FindInt("uEclosion", radius)) {
        eclosionFilter->SetParam("uEclosion", kParamInt, NLEParamValue::Int(radius));
    }
}

int32_t NLEOpenGLBackGroundBurnningEffect::DoEffect(const FrameRecord& second,
                                                    const FrameRecord& first, FrameRecord& out,
                                                    int32_t frameWidth, int32_t frameHeight,
                                                    int32_t frameStride) {
    if (!engine || !afterimageFilter) return kFilterFailed;
    int32_t slot = 0;
    SetInputFrame(slot, first);
    SetInputFrame(slot, second);
    PrepareFeathering(frameWidth, frameHeight);
    engine->SetUniformFloat("uTime", Time().Tick());
    HandOverParams(params, *afterimageFilter);
    UploadParams();
    FrameRecord trail =
        RunSubFilter(*afterimageFilter, *this, second, first, frameWidth, frameHeight, frameStride);
    if (eclosionFilter) {
        eclosionFilter->inputOverride = TextureReference(trail);
        trail = RunSubFilter(*eclosionFilter, *this, second, first, frameWidth, frameHeight,
                             frameStride);
    }
    engine->SetInputTexture(slot++, trail, frameWidth, frameHeight, frameStride);
    SetInputFrame(slot, afterimageFilter->MaskFrame());
    BindFirstMaterial(*engine, slot, textureFrames.get());
    return RenderTo(out);
}

}  // namespace kelmo
