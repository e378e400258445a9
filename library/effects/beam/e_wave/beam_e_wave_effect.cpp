// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/beam/e_wave/beam_e_wave_effect.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "framework/filter/effect_registry.h"
#include "framework/filter/filter_guids.h"

namespace kelmo {
namespace {

constexpr const char* kBoundNames[] = {"uBoundLeftX", "uBoundLeftY", "uBoundRightX",
                                       "uBoundRightY"};

}  // namespace

NLEOpenGLBeamEWaveEffect::NLEOpenGLBeamEWaveEffect(std::shared_ptr<NLEFilterInfo> filterInfo,
                                                   const char* lookGuid)
    : BodyRingEffect(std::move(filterInfo)),
      beam(subFilters.AddAs<NLEOpenGLBeamEffect>(kBeamWaveGuid)),
      look(lookGuid && *lookGuid ? looks.AddAs<NLEOpenGLBeamEdgeFlowEffect>(lookGuid) : nullptr),
      eclosion(look ? nullptr : subFilters.AddAs<NLEOpenGLBeamEclosionEffect>(kBeamEclosionGuid)) {
    if (look) look->SetBeam(beam);
}

int32_t NLEOpenGLBeamEWaveEffect::InitParams() {
    for (int i = 0; i < 2; ++i) engine->AddInputTexture(width, height, stride, true);
    colorBytes.Declare(*engine);
    return kFilterOk;
}

int32_t NLEOpenGLBeamEWaveEffect::InitEffect() {
    subFilters.InitEffects();
    looks.InitEffects();
    return BodyRingEffect::InitEffect();
}

int32_t NLEOpenGLBeamEWaveEffect::Resize(int32_t newWidth, int32_t newHeight, int32_t newStride) {
    subFilters.Resize(WorkingSize::For(newWidth, newHeight));
    looks.Resize(newWidth, newHeight, newStride);
    return BodyRingEffect::Resize(newWidth, newHeight, newStride);
}

float NLEOpenGLBeamEWaveEffect::Place() {
    const float place = Cycle() * FloatOr("uOrientation", 0.0F) + FloatOr("uStartPos", 0.0F);
    if (!std::isfinite(place)) return 0.0F;
    const float wrapped = place > 1.0F ? place - 1.0F : place < 0.0F ? place + 1.0F : place;
    // A host's huge number must stay one that pixels can be counted in.
    return std::clamp(wrapped, -1000.0F, 1000.0F);
}

void NLEOpenGLBeamEWaveEffect::SendFeather(const cv::Vec4f& bound, const WorkingSize& size) {
    if (!eclosion) return;
    eclosion->SetParam("uEclosion", kParamInt, NLEParamValue::Int(IntOr("uEclosion", 0)));
    for (int i = 0; i < 4; ++i) {
        eclosion->SetParam(kBoundNames[i], kParamFloat, NLEParamValue::Float(bound[i]));
    }
    eclosion->SetParam("uViewSizeWidth", kParamFloat,
                       NLEParamValue::Float(static_cast<float>(size.width)));
    eclosion->SetParam("uViewSizeHeight", kParamFloat,
                       NLEParamValue::Float(static_cast<float>(size.height)));
}

int32_t NLEOpenGLBeamEWaveEffect::DrawOwn(const FrameRecord& second, const FrameRecord& first,
                                          FrameRecord& out, int32_t frameWidth, int32_t frameHeight,
                                          int32_t frameStride) {
    int32_t slot = 0;
    SetInputFrame(slot, first);
    const auto run = [&](NLEOpenGLFilter& stage) {
        return RunSubFilter(stage, *this, second, first, frameWidth, frameHeight, frameStride);
    };
    run(*beam);
    const FrameRecord lines = beam->GetTargetFrame(0);
    engine->SetInputTexture(slot++, lines, frameWidth, frameHeight, frameStride);
    if (eclosion) {
        eclosion->inputOverride = TextureReference(lines);
        engine->SetInputTexture(slot++, run(*eclosion), frameWidth, frameHeight, frameStride);
    }
    float enhance = 0.0F;
    if (FindFloat("uEnhance", enhance)) engine->SetUniformFloat("uEnhance", enhance);
    SendColor();
    return RenderTo(out);
}

int32_t NLEOpenGLBeamEWaveEffect::DoEffect(const FrameRecord& second, const FrameRecord& first,
                                           FrameRecord& out, int32_t frameWidth,
                                           int32_t frameHeight, int32_t frameStride) {
    if (!engine || !beam) return kFilterFailed;
    beam->SetProgress(0.0F, 1.0F);
    HandOverParams(params, *beam);
    if (look) HandOverParams(params, *look);
    UploadParams();
    UploadGlobalTime(*engine, Time());
    const WorkingSize size = WorkingSize::For(frameWidth, frameHeight);
    if (!FindBodies(first, size)) return kFilterFailed;
    const float place = Place();
    const int32_t bandHeight = size.height * 16 / 308;
    const cv::Rect box = MakeRings(*beam, true, size, [&](const cv::Rect& body) {
        const float top = static_cast<float>(body.height) * place + static_cast<float>(body.y);
        return Band{static_cast<int32_t>(top), bandHeight};
    });
    const float margin = 2.0F * FloatOr("uSinRadius", 0.0F) * static_cast<float>(size.width) +
                         static_cast<float>(IntOr("uEclosion", 0)) + 1.0F;
    const cv::Vec4f bound = Bound(box, std::trunc(margin), size);
    if (!look) {
        SendFeather(bound, size);
        return DrawOwn(second, first, out, frameWidth, frameHeight, frameStride);
    }
    look->SetFixedBound(bound.val);
    look->SetPosition(position);
    look->SetDuration(duration);
    return look->DoEffect(second, first, out, frameWidth, frameHeight, frameStride);
}

}  // namespace kelmo
