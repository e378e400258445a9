// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/scene/planes/reflection_effect.h"

#include <utility>

#include "framework/filter/effect_registry.h"
#include "framework/filter/filter_guids.h"

namespace kelmo {
namespace {

constexpr const char* kLayersGuid = "C7A3DB01-7222-4B68-A2D8-5B4F03F650F2";
constexpr const char* kSoftGuid = "6721F018-C91D-4501-AF90-790159D76BE3";
constexpr const char* kDistanceGuid = "5DCDD5F7-4967-40BD-8D24-11F27B89AA76";

const bool kRegistered =
    RegisterEffect("NLEOpenGLReflectionEffect", MakeEffect<NLEOpenGLReflectionEffect>,
                   {kLayersGuid, kSoftGuid, kDistanceGuid});

constexpr float kRadians = 0.017453292F;
constexpr int32_t kWiderBy = 10;
constexpr int32_t kInputs = 4;

}  // namespace

NLEOpenGLReflectionEffect::NLEOpenGLReflectionEffect(std::shared_ptr<NLEFilterInfo> filterInfo)
    : NLEOpenGLFilter(std::move(filterInfo)),
      way(info->guid == kSoftGuid       ? Way::kSoft
          : info->guid == kDistanceGuid ? Way::kDistance
                                        : Way::kLayers) {
    if (way != Way::kSoft) return;
    feather = stages.AddAs<NLEOpenGLBeamEclosionEffect>(kBeamEclosionGuid);
    wideFeather = stages.AddAs<NLEOpenGLBeamEclosionEffect>(kBeamEclosionGuid);
}

int32_t NLEOpenGLReflectionEffect::InitEffect() {
    stages.InitEffects();
    return NLEOpenGLFilter::InitEffect();
}

int32_t NLEOpenGLReflectionEffect::Resize(int32_t newWidth, int32_t newHeight, int32_t newStride) {
    stages.Resize(WorkingSize::For(newWidth, newHeight));
    return NLEOpenGLFilter::Resize(newWidth, newHeight, newStride);
}

int32_t NLEOpenGLReflectionEffect::InitParams() {
    for (const char* line : {"baseLine", "adjustLine", "tmpLine", "fixedLine"}) {
        engine->AddUniformVec4(line, 0.0F, 0.0F, 0.0F, 0.0F);
    }
    tintBytes.Declare(*engine);
    engine->AddUniformInt("calLayer", 0);
    engine->AddRenderTarget();
    for (auto declared = static_cast<int32_t>(inputs.size()); declared < kInputs; ++declared) {
        engine->AddInputTexture(width, height, stride, true);
    }
    return kFilterOk;
}

void NLEOpenGLReflectionEffect::SendLine(const char* name, const cv::Vec4f& line) {
    engine->SetUniformVec4(name, line[0], line[1], line[2], line[3]);
}

void NLEOpenGLReflectionEffect::SendLines(int32_t frameWidth, int32_t frameHeight) {
    const float degrees = FloatOr("reflectionAngle", 0.0F);
    const FloorLine floor(FloatOr("floorPositionX", 0.5F), FloatOr("floorPositionY", 0.7F), degrees,
                          {frameWidth, frameHeight});
    SendLine("baseLine", floor.Line());
    SendLine("fixedLine", floor.Parallel(floor.Farthest()));
    if (way == Way::kDistance) {
        const auto rows = static_cast<float>(frameHeight);
        const float distance = FloatOr("reflectionDistance", 0.0F) * rows;
        const float falloff = FloatOr("reflectionFalloff", 0.0F) * rows;
        SendLine("adjustLine", floor.Parallel(distance));
        SendLine("tmpLine", floor.Parallel(distance + falloff));
    }
    engine->SetUniformFloat("reflectionAngle", degrees * kRadians);
}

void NLEOpenGLReflectionEffect::BindFeathered(int32_t& slot, const FrameRecord& layer,
                                              int32_t frameWidth, int32_t frameHeight,
                                              int32_t frameStride) {
    const WorkingSize size = WorkingSize::For(frameWidth, frameHeight);
    const int32_t softness = IntOr("uEclosion", 0);
    FrameRecord picture = layer;
    int32_t wider = 0;
    for (NLEOpenGLBeamEclosionEffect* const stage : {feather, wideFeather}) {
        if (stage) {
            HandOverParams(params, *stage);
            stage->SetParam("uEclosion", kParamInt, NLEParamValue::Int(softness + wider));
            stage->SetParam("uViewSizeWidth", kParamFloat, NLEParamValue::Float(548.0F));
            stage->SetParam("uViewSizeHeight", kParamFloat, NLEParamValue::Float(308.0F));
            stage->inputOverride = TextureReference(picture);
            picture = RunSubFilter(*stage, *this, {}, {}, size);
        }
        engine->SetInputTexture(slot++, picture, frameWidth, frameHeight, frameStride);
        wider = kWiderBy;
    }
}

int32_t NLEOpenGLReflectionEffect::DoEffect(const FrameRecord&, const FrameRecord& first,
                                            FrameRecord& out, int32_t frameWidth,
                                            int32_t frameHeight, int32_t frameStride) {
    if (!engine || frameWidth <= 0 || frameHeight <= 0) return kFilterFailed;
    UploadParams();
    UploadGlobalTime(*engine, Time());
    SendLines(frameWidth, frameHeight);
    tintBytes.Set(*engine, IntOr("tint", 0xFFFFFF));
    if (way == Way::kSoft) {
        engine->SetUniformFloat("materialID", static_cast<float>(IntOr("materialID", 0)));
    }
    int32_t slot = 0;
    SetInputFrame(slot, first);
    if (way == Way::kDistance) return RenderTo(out);
    engine->SetUniformInt("calLayer", 1);
    if (RenderPass() != kFilterOk) return kFilterFailed;
    engine->SetRenderTarget(0);
    const FrameRecord layer = GetTargetFrame(0);
    engine->SetInputTexture(slot++, layer, frameWidth, frameHeight, frameStride);
    if (way == Way::kSoft) BindFeathered(slot, layer, frameWidth, frameHeight, frameStride);
    engine->SetUniformInt("calLayer", 2);
    return RenderTo(out);
}

}  // namespace kelmo
