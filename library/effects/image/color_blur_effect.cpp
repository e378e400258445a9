// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/image/color_blur_effect.h"

#include "framework/filter/effect_registry.h"
#include "framework/filter/filter_guids.h"

namespace kelmo {
namespace {

const bool kRegistered =
    RegisterEffect("NLEOpenGLColorBlurEffect", MakeEffect<NLEOpenGLColorBlurEffect>,
                   {"CDD6ABAB-0A2B-44FF-A7F9-E962B6FD9CE1"});

constexpr const char* kFloatNames[] = {"uEnhance", "WholeBlurIntension", "RBlurIntension",
                                       "GBlurIntension", "BBlurIntension"};

}  // namespace

NLEOpenGLColorBlurEffect::NLEOpenGLColorBlurEffect(std::shared_ptr<NLEFilterInfo> filterInfo)
    : NLEOpenGLFilter(std::move(filterInfo)), eclosionFilter(subFilters.Add(kBeamEclosionGuid)) {}

int32_t NLEOpenGLColorBlurEffect::InitEffect() {
    subFilters.InitEffects();
    return NLEOpenGLFilter::InitEffect();
}

int32_t NLEOpenGLColorBlurEffect::Resize(int32_t newWidth, int32_t newHeight, int32_t newStride) {
    subFilters.Resize(WorkingSize::For(newWidth, newHeight));
    return NLEOpenGLFilter::Resize(newWidth, newHeight, newStride);
}

int32_t NLEOpenGLColorBlurEffect::DoEffect(const FrameRecord& second, const FrameRecord& first,
                                           FrameRecord& out, int32_t frameWidth,
                                           int32_t frameHeight, int32_t frameStride) {
    if (!engine) return kFilterFailed;
    int32_t eclosion = 0;
    if (FindInt("uEclosion", eclosion)) {
        engine->SetUniformInt("uEclosion", eclosion);
        if (eclosionFilter) {
            eclosionFilter->SetParam("uEclosion", kParamInt, NLEParamValue::Int(eclosion));
        }
    }
    int32_t slot = 0;
    SetInputFrame(slot, first);
    SetInputFrame(slot, second);
    if (eclosionFilter) {
        FrameRecord feathered = FrameRecord::TargetLess(frameWidth, frameHeight, frameStride);
        eclosionFilter->DoEffect(second, first, feathered, frameWidth, frameHeight, frameStride);
        engine->SetInputTexture(slot++, eclosionFilter->GetResultFrame(), frameWidth, frameHeight,
                                frameStride);
    }
    for (const char* name : kFloatNames) {
        float value = 0.0F;
        if (FindFloat(name, value)) engine->SetUniformFloat(name, value);
    }
    return RenderTo(out);
}

}  // namespace kelmo
