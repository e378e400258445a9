// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/beam/tracked/beam_shape_noise_effect.h"

#include <cmath>
#include <utility>

#include "framework/filter/effect_registry.h"
#include "framework/filter/filter_guids.h"

namespace kelmo {
namespace {

const bool kRegistered =
    RegisterEffect("NLEOpenGLBeamShapeNoiseEffect", MakeEffect<NLEOpenGLBeamShapeNoiseEffect>,
                   {kBeamShapeNoiseGuid});

constexpr int32_t kSide = 256;
constexpr int32_t kRowBytes = 4 * kSide;
constexpr float kRadians = 0.017453292F;
/// Corners of the card as its two triangles go round them, with their places in the picture.
constexpr float kCorners[6][2] = {{1, -1}, {1, 1}, {-1, 1}, {1, -1}, {-1, 1}, {-1, -1}};
constexpr float kTexCoords[6][2] = {{0, 1}, {1, 1}, {1, 0}, {0, 1}, {1, 0}, {0, 0}};
constexpr float kRadius = 0.6F;
constexpr float kBow = 0.774F;

}  // namespace

NLEOpenGLBeamShapeNoiseEffect::NLEOpenGLBeamShapeNoiseEffect(
    std::shared_ptr<NLEFilterInfo> filterInfo)
    : NLEOpenGLFilter(std::move(filterInfo)),
      beam(stages.AddAs<NLEOpenGLBeamEffect>(kBeamGuid)),
      eclosion(stages.AddAs<NLEOpenGLBeamEclosionEffect>(kBeamEclosionGuid)),
      noise(stages.Add(kFractalNoiseGuid)) {}

int32_t NLEOpenGLBeamShapeNoiseEffect::InitEffect() {
    stages.InitEffects();
    return NLEOpenGLFilter::InitEffect();
}

int32_t NLEOpenGLBeamShapeNoiseEffect::Resize(int32_t newWidth, int32_t newHeight,
                                              int32_t newStride) {
    stages.Resize(kSide, kSide, kRowBytes);
    return NLEOpenGLFilter::Resize(newWidth, newHeight, newStride);
}

int32_t NLEOpenGLBeamShapeNoiseEffect::InitParams() {
    for (auto declared = static_cast<int32_t>(inputs.size()); declared < 2; ++declared) {
        engine->AddInputTexture(width, height, stride, true);
    }
    return kFilterOk;
}

void NLEOpenGLBeamShapeNoiseEffect::PlaceCard(int32_t frameWidth, int32_t frameHeight) {
    const float p = FloatOr("pitch", 0.0F) * kRadians, y = FloatOr("yaw", 0.0F) * kRadians,
                r = FloatOr("roll", 0.0F) * kRadians;
    const float a = std::cos(p) * std::cos(r) + std::sin(r) * std::sin(p) * std::sin(y);
    const float b = std::cos(r) * std::sin(p) * std::sin(y) - std::sin(r) * std::cos(p);
    const float c = std::sin(r) * std::cos(y), d = std::cos(r) * std::cos(y);
    const float scale = FloatOr("scale", 1.0F), shifting = FloatOr("shifting", 0.0F);
    const float centerX = FloatOr("center_x", 0.0F), centerY = FloatOr("center_y", 0.0F);
    const auto columns = static_cast<float>(frameWidth), rows = static_cast<float>(frameHeight);
    const float ax = columns > rows ? rows / columns : 1.0F;
    const float ay = columns > rows ? 1.0F : columns / rows;
    for (std::size_t k = 0; k < 6; ++k) {
        const auto& [e, f] = kCorners[k];
        const float u = scale * (e * a + f * b) + shifting * std::cos(y) * std::sin(p);
        const float v = scale * (e * c + f * d) - shifting * std::sin(y);
        card[3 * k] = v * ax + centerX;
        card[3 * k + 1] = u * ay + centerY;
        card[3 * k + 2] = 0.0F;
    }
    engine->AddVertexAttribute("position", 3, card.data(), false, false);
    engine->AddVertexAttribute("texcoord", 2, kTexCoords, true, false);
    engine->SetVertexCount(6);
    engine->SetClearColor(0.0F, 0.0F, 0.0F, 0.0F);
    engine->SetBlendMode(kBlendReplace);
    engine->SetDrawType(kDrawTriangles);
}

void NLEOpenGLBeamShapeNoiseEffect::DrawRing(int32_t& slot) {
    const cv::Point2f left(-kRadius, 0.0F), right(kRadius, 0.0F), up(0.0F, kBow);
    beam->SetLine({left, right, left + up, right + up, 0.0F, 1.0F}, 0);
    beam->SetLine({right, left, right - up, left - up, 0.0F, 1.0F}, 1);
    beam->SetLineCount(2);
    beam->SetProgress(0.0F, 1.0F);
    const auto run = [&](NLEOpenGLFilter& stage) {
        return RunSubFilter(stage, *this, {}, {}, kSide, kSide, kRowBytes);
    };
    eclosion->inputOverride = TextureReference(run(*beam));
    engine->SetInputTexture(slot++, run(*eclosion), kSide, kSide, kRowBytes);
    for (const char* name : {"uViewSizeWidth", "uViewSizeHeight"}) {
        noise->SetParam(name, kParamFloat, NLEParamValue::Float(static_cast<float>(kSide)));
    }
    engine->SetInputTexture(slot++, run(*noise), kSide, kSide, kRowBytes);
}

int32_t NLEOpenGLBeamShapeNoiseEffect::DoEffect(const FrameRecord&, const FrameRecord&,
                                                FrameRecord& out, int32_t frameWidth,
                                                int32_t frameHeight, int32_t) {
    if (!engine || !beam || !eclosion || !noise || frameWidth <= 0 || frameHeight <= 0) {
        return kFilterFailed;
    }
    for (NLEOpenGLFilter* const stage :
         {static_cast<NLEOpenGLFilter*>(beam), static_cast<NLEOpenGLFilter*>(eclosion), noise}) {
        HandOverParams(params, *stage);
    }
    UploadParams();
    UploadGlobalTime(*engine, Time());
    PlaceCard(frameWidth, frameHeight);
    int32_t slot = 0;
    DrawRing(slot);
    return RenderTo(out);
}

}  // namespace kelmo
