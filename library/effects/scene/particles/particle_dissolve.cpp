// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/scene/particles/particle_dissolve.h"

#include <utility>

#include "framework/filter/effect_registry.h"
#include "framework/filter/filter_guids.h"

namespace kelmo {
namespace {

const bool kRegistered = RegisterEffect(
    "NLEOpenGLParticleDissolve", MakeEffect<NLEOpenGLParticleDissolve>,
    {"754E7562-27F0-4C93-AD51-5D6310E32967", "6283B11E-A784-46AD-9486-A797CF1A1DBF"});

constexpr int32_t kParticleSlot = 2;

}  // namespace

NLEOpenGLParticleDissolve::NLEOpenGLParticleDissolve(std::shared_ptr<NLEFilterInfo> filterInfo)
    : NLEOpenGLFilter(std::move(filterInfo)), particles(stages.Add(kParticleGuid)) {
    needCpuFrame = 1;
}

int32_t NLEOpenGLParticleDissolve::InitEffect() {
    stages.InitEffects();
    return NLEOpenGLFilter::InitEffect();
}

int32_t NLEOpenGLParticleDissolve::Resize(int32_t newWidth, int32_t newHeight, int32_t newStride) {
    stages.Resize(newWidth, newHeight, newStride);
    return NLEOpenGLFilter::Resize(newWidth, newHeight, newStride);
}

int32_t NLEOpenGLParticleDissolve::InitParams() {
    for (auto declared = static_cast<int32_t>(inputs.size()); declared <= kParticleSlot;
         ++declared) {
        engine->AddInputTexture(width, height, stride, true);
    }
    return kFilterOk;
}

int32_t NLEOpenGLParticleDissolve::DoEffect(const FrameRecord& second, const FrameRecord& first,
                                            FrameRecord& out, int32_t frameWidth,
                                            int32_t frameHeight, int32_t frameStride) {
    if (!engine || !particles) return kFilterFailed;
    const float seconds = FloatOr("duration", 2.0F);
    particles->SetParam("uDuration", kParamFloat, NLEParamValue::Float(seconds));
    particles->SetParam("uParticleSize", kParamFloat,
                        NLEParamValue::Float(FloatOr("particleSize", 10.0F)));
    particles->SetParam("uParticleAmount", kParamInt,
                        NLEParamValue::Int(IntOr("particleAmount", 5)));
    int32_t slot = 0;
    SetInputFrame(slot, first);
    SetInputFrame(slot, second);
    RunSubFilter(*particles, *this, {}, first, frameWidth, frameHeight, frameStride);
    engine->SetInputTexture(kParticleSlot, particles->GetTargetFrame(0), frameWidth, frameHeight,
                            frameStride);
    UploadParams();
    engine->SetUniformFloat("duration", seconds);
    UploadGlobalTime(*engine, Time());
    return RenderTo(out);
}

}  // namespace kelmo
