// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/beam/tracked/beam_face_shock_effect.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "effects/beam/tracked/head_direction.h"
#include "framework/filter/effect_registry.h"
#include "framework/filter/filter_guids.h"

namespace kelmo {
namespace {

const bool kRegistered =
    RegisterEffect("NLEOpenGLBeamFaceShockEffect", MakeEffect<NLEOpenGLBeamFaceShockEffect>,
                   {"96564335-3185-B2FB-0588-372C1B84BDE0"});

constexpr std::size_t kMiddle = 62;
constexpr float kUsualTicks = 15.0F;

}  // namespace

NLEOpenGLBeamFaceShockEffect::NLEOpenGLBeamFaceShockEffect(
    std::shared_ptr<NLEFilterInfo> filterInfo)
    : NLEOpenGLCombineFilter(std::move(filterInfo)), shapeNoise(stages.Add(kBeamShapeNoiseGuid)) {
    needCpuFrame = 1;
}

int32_t NLEOpenGLBeamFaceShockEffect::InitEffect() {
    stages.InitEffects();
    return NLEOpenGLCombineFilter::InitEffect();
}

int32_t NLEOpenGLBeamFaceShockEffect::Resize(int32_t newWidth, int32_t newHeight,
                                             int32_t newStride) {
    stages.Resize(newWidth, newHeight, newStride);
    return NLEOpenGLCombineFilter::Resize(newWidth, newHeight, newStride);
}

int32_t NLEOpenGLBeamFaceShockEffect::InitParams() {
    engine->AddUniformVec2("uFaceVector", 0.0F, 0.0F);
    engine->AddUniformVec2("uCenter", 0.0F, 0.0F);
    engine->AddInputTexture(width, height, stride, true);
    return kFilterOk;
}

void NLEOpenGLBeamFaceShockEffect::SetRing(const char* name, float value) {
    shapeNoise->SetParam(name, kParamFloat, NLEParamValue::Float(value));
}

void NLEOpenGLBeamFaceShockEffect::AimAt(const AIDATA::HumanFaceInfo& face, float scale) {
    if (face.landmarks.size() <= kMiddle || !LooksAhead(face)) return;
    SetRing("roll", static_cast<float>(face.roll));
    SetRing("yaw", static_cast<float>(face.yaw));
    SetRing("pitch", static_cast<float>(face.pitch));
    const cv::Point2f way = HeadDirection(face);
    engine->SetUniformVec2("uFaceVector", way.x, way.y);
    SetRing("scale", scale);
    const auto& [x, y] = face.landmarks[kMiddle];
    SetRing("center_x", 2.0F * x - 1.0F);
    SetRing("center_y", 2.0F * y - 1.0F);
    engine->SetUniformVec2("uCenter", x, y);
}

int32_t NLEOpenGLBeamFaceShockEffect::DoEffect(const FrameRecord&, const FrameRecord& first,
                                               FrameRecord& out, int32_t frameWidth,
                                               int32_t frameHeight, int32_t frameStride) {
    if (!engine || !shapeNoise) return kFilterFailed;
    HandOverParams(params, *shapeNoise);
    UploadParams();
    UploadGlobalTime(*engine, Time());
    float cycle = 0.0F;
    const float ticks =
        FindFloat("duration", cycle) ? 1.0F + std::trunc(cycle * 1000.0F) : kUsualTicks;
    const float u = CycleFraction(Time().Tick(), ticks);
    SetRing("shifting", FloatOr("shiftingChangeRatio", 2.0F) * u);
    SetRing("scale", 0.0F);
    const float scale = FloatOr("scaleChangeRatio", 2.0F) * u + FloatOr("startScale", 0.3F);
    cv::Mat picture;
    GetMat(picture, first);
    if (tracker && !picture.empty()) {
        const auto found = tracker.Analyse<AIDATA::HumanFaceInfoMultiDatas>(
            {nullptr, frameWidth, frameHeight, frameStride},
            {picture.data, picture.cols, picture.rows, static_cast<int32_t>(picture.step)});
        if (found) {
            for (const AIDATA::HumanFaceInfo& face : found->faces) AimAt(face, scale);
        }
    }
    int32_t slot = 0;
    SetInputFrame(slot, first);
    const FrameRecord ring =
        RunSubFilter(*shapeNoise, *this, {}, first, frameWidth, frameHeight, frameStride);
    engine->SetInputTexture(slot, ring, frameWidth, frameHeight, frameStride);
    return RenderTo(out);
}

}  // namespace kelmo
