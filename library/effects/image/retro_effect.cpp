// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/image/retro_effect.h"

#include "framework/filter/effect_registry.h"
#include "framework/filter/filter_guids.h"
#include "framework/textures/material_binding.h"
#include "framework/textures/texture_frames.h"

namespace kelmo {
namespace {

constexpr const char* kBlurredGuid = "E3281184-804B-411E-9F9D-15B63B06E8E8";

const bool kRegistered = RegisterEffect(
    "NLEOpenGLRetroEffect", MakeEffect<NLEOpenGLRetroEffect>,
    {kBlurredGuid, "8E1438F9-EA85-4367-9393-3700BE6A6C8E", "0EF05B3D-6489-4637-90D8-F234D8B041CF"});

/// The sequences' pictures start at this many a second of effect time.
constexpr float kSlowest = 5.0F;
constexpr float kFastest = 25.0F;

}  // namespace

NLEOpenGLRetroEffect::NLEOpenGLRetroEffect(std::shared_ptr<NLEFilterInfo> filterInfo)
    : NLEOpenGLFilter(std::move(filterInfo)),
      blurFilter(subFilters.Add(info->guid == kBlurredGuid ? kDualKawaseBlurGuid : nullptr)) {}

int32_t NLEOpenGLRetroEffect::InitEffect() {
    subFilters.InitEffects();
    return NLEOpenGLFilter::InitEffect();
}

int32_t NLEOpenGLRetroEffect::Resize(int32_t newWidth, int32_t newHeight, int32_t newStride) {
    subFilters.Resize(newWidth, newHeight, newStride);
    return NLEOpenGLFilter::Resize(newWidth, newHeight, newStride);
}

FrameRecord NLEOpenGLRetroEffect::Blurred(const FrameRecord& second, const FrameRecord& first,
                                          int32_t frameWidth, int32_t frameHeight,
                                          int32_t frameStride) {
    // Every 25 of strength are one more halving; what is left widens the samples.
    const int32_t strength = IntOr("strength", 0);
    const float offset = static_cast<float>(strength % 25) / 25.0F + 1.0F;
    blurFilter->SetParam("uIterations", kParamInt, NLEParamValue::Int(strength / 25));
    blurFilter->SetParam("uOffset", kParamFloat, NLEParamValue::Float(offset));
    FrameRecord target = FrameRecord::TargetLess(frameWidth, frameHeight, frameStride);
    blurFilter->DoEffect(second, first, target, frameWidth, frameHeight, frameStride);
    const FrameRecord result = blurFilter->GetResultFrameAlt();
    target.tag = result.tag;
    target.texture = result.texture;
    target.reserved = result.reserved;
    target.isCpu = 0;
    return target;
}

float NLEOpenGLRetroEffect::PictureRate() {
    int32_t speed = 0;
    if (!FindInt("speed", speed)) return kFastest;
    const double part = speed / 100.0;
    return static_cast<float>((1.0 - part) * kSlowest + part * kFastest);
}

int32_t NLEOpenGLRetroEffect::DoEffect(const FrameRecord& second, const FrameRecord& first,
                                       FrameRecord& out, int32_t frameWidth, int32_t frameHeight,
                                       int32_t frameStride) {
    if (!engine) return kFilterFailed;
    const FrameTime time = Time();
    UploadGlobalTime(*engine, time);
    UploadParams();
    const FrameRecord picture =
        blurFilter ? Blurred(second, first, frameWidth, frameHeight, frameStride) : first;
    int32_t slot = 0;
    SetInputFrame(slot, picture);
    BindMaterialAtIndex(*engine, slot, textureFrames.get(),
                        static_cast<int64_t>(time.position * PictureRate()));
    return RenderTo(out);
}

}  // namespace kelmo
