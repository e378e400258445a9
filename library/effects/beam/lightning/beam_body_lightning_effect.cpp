// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/beam/lightning/beam_body_lightning_effect.h"

#include <opencv2/imgproc.hpp>
#include <utility>

#include "effects/beam/lightning/beam_bolts.h"
#include "framework/filter/effect_registry.h"
#include "framework/filter/filter_guids.h"
#include "framework/shared/picture_record.h"

namespace kelmo {
namespace {

const bool kRegistered =
    RegisterEffect("NLEOpenGLBeamBodyLightningEffect", MakeEffect<NLEOpenGLBeamBodyLightningEffect>,
                   {"721B3AC1-1CC7-3002-B971-C0B9A5EC8BB2"});

constexpr double kCertain = 100.0;
constexpr double kMarked = 250.0;
constexpr int32_t kUsualInterval = 15;
constexpr int32_t kUsualLight = 12;

/// Values that the line renderer takes under their own names.
constexpr const char* kBeamValues[] = {"uRadius", "uZoomStartNode", "uZoomEndNode",
                                       "uAlphaStartNode", "uAlphaEndNode"};
constexpr const char* kBoundNames[] = {"uBoundLeftX", "uBoundLeftY", "uBoundRightX",
                                       "uBoundRightY"};

}  // namespace

NLEOpenGLBeamBodyLightningEffect::NLEOpenGLBeamBodyLightningEffect(
    std::shared_ptr<NLEFilterInfo> filterInfo)
    : NLEOpenGLCombineFilter(std::move(filterInfo)),
      beam(subFilters.AddAs<NLEOpenGLBeamEffect>(kBeamGuid)),
      eclosion(subFilters.AddAs<NLEOpenGLBeamEclosionEffect>(kBeamEclosionGuid)) {
    needCpuFrame = 1;
}

int32_t NLEOpenGLBeamBodyLightningEffect::InitParams() {
    for (int i = 0; i < 2; ++i) engine->AddInputTexture(width, height, stride, true);
    engine->AddUniformVec4("uBound", 0.0F, 0.0F, 1.0F, 1.0F);
    engine->AddUniformFloat("uViewSizeWidth", static_cast<float>(WorkingSize::Wide().width));
    engine->AddUniformFloat("uViewSizeHeight", static_cast<float>(WorkingSize::Wide().height));
    colorBytes.Declare(*engine);
    return kFilterOk;
}

int32_t NLEOpenGLBeamBodyLightningEffect::InitEffect() {
    subFilters.InitEffects();
    return NLEOpenGLCombineFilter::InitEffect();
}

int32_t NLEOpenGLBeamBodyLightningEffect::Resize(int32_t newWidth, int32_t newHeight,
                                                 int32_t newStride) {
    subFilters.Resize(WorkingSize::For(newWidth, newHeight));
    return NLEOpenGLCombineFilter::Resize(newWidth, newHeight, newStride);
}

bool NLEOpenGLBeamBodyLightningEffect::FindBody(const FrameRecord& first, const WorkingSize& size) {
    cv::Mat picture;
    GetMat(picture, first);
    if (picture.empty()) return false;
    const cv::Size working(size.width, size.height);
    cv::resize(picture, scaledInput, working, 0.0, 0.0, cv::INTER_LINEAR);
    FrameRecord mask;
    if (!GetHumanMask(mask, segmentation.Get(), maskMat, PictureRecord(scaledInput), true, true,
                      &working, true, 1)) {
        return false;
    }
    cv::threshold(maskMat, body, kCertain, kMarked, cv::THRESH_BINARY);
    return true;
}

/// Gives the box of the part of the body that the bolts start from, or of the whole in the dark.
cv::Rect NLEOpenGLBeamBodyLightningEffect::DrawBolts() {
    const BodyFlash flash = BodyFlash::At(Time().Tick(), IntOr("interval_flashing", kUsualInterval),
                                          IntOr("interval_light", kUsualLight));
    cv::Rect box = cv::boundingRect(body);
    if (!flash.lit || box.width < 1) {
        // One line outside of the picture.
        const cv::Point2f kAway(-3.0F, -3.0F);
        beam->SetLine(CurveLine::Straight(kAway, kAway, 0.0F, 1.0F), 0);
        beam->SetLineCount(1);
        return box;
    }
    box.y += box.height / 4;  // heads are spared
    box.height = 3 * box.height / 4;
    beam->SetLineCount(0);
    bolts.Draw(flash.tick, body, box, AppendTo(*beam));
    return box;
}

void NLEOpenGLBeamBodyLightningEffect::SendBound(const cv::Rect& box, const WorkingSize& size) {
    const auto columns = static_cast<float>(size.width);
    const auto rows = static_cast<float>(size.height);
    const auto margin = static_cast<float>(eclosionRadius);
    const float bound[4] = {(static_cast<float>(box.x) - margin) / columns,
                            (static_cast<float>(box.y) - margin) / rows,
                            (static_cast<float>(box.br().x) + margin) / columns,
                            (static_cast<float>(box.br().y) + margin) / rows};
    engine->SetUniformVec4("uBound", bound[0], bound[1], bound[2], bound[3]);
    if (!eclosion) return;
    for (std::size_t i = 0; i < 4; ++i) {
        eclosion->SetParam(kBoundNames[i], kParamFloat, NLEParamValue::Float(bound[i]));
    }
    eclosion->SetParam("uViewSizeWidth", kParamFloat, NLEParamValue::Float(columns));
    eclosion->SetParam("uViewSizeHeight", kParamFloat, NLEParamValue::Float(rows));
}

void NLEOpenGLBeamBodyLightningEffect::DrawStages(const FrameRecord& second,
                                                  const FrameRecord& first, const WorkingSize& size,
                                                  int32_t frameWidth, int32_t frameHeight,
                                                  int32_t frameStride) {
    int32_t slot = 0;
    SetInputFrame(slot, first);
    for (const char* name : kBeamValues) {
        float value = 0.0F;
        if (FindFloat(name, value)) beam->SetParam(name, kParamFloat, NLEParamValue::Float(value));
    }
    const FrameRecord lines = RunBolts(*beam, *this, second, first, size);
    BindStageResult(*engine, slot, lines, size);
    if (!eclosion) return;
    eclosion->inputOverride = TextureReference(lines);
    engine->SetInputTexture(
        slot++, RunSubFilter(*eclosion, *this, second, first, frameWidth, frameHeight, frameStride),
        frameWidth, frameHeight, frameStride);
}

int32_t NLEOpenGLBeamBodyLightningEffect::DoEffect(const FrameRecord& second,
                                                   const FrameRecord& first, FrameRecord& out,
                                                   int32_t frameWidth, int32_t frameHeight,
                                                   int32_t frameStride) {
    if (!engine || !beam) return kFilterFailed;
    UploadParams();
    UploadGlobalTime(*engine, Time());
    const WorkingSize size = WorkingSize::For(frameWidth, frameHeight);
    if (!FindBody(first, size)) return kFilterFailed;
    const cv::Rect box = DrawBolts();
    if (eclosion && FindInt("uEclosion", eclosionRadius)) {
        eclosion->SetParam("uEclosion", kParamInt, NLEParamValue::Int(eclosionRadius));
    }
    SendBound(box, size);
    DrawStages(second, first, size, frameWidth, frameHeight, frameStride);
    int32_t color = 0;
    if (FindInt("color", color)) colorBytes.Set(*engine, color);
    engine->SetUniformFloat("uViewSizeWidth", static_cast<float>(size.width));
    engine->SetUniformFloat("uViewSizeHeight", static_cast<float>(size.height));
    return RenderTo(out);
}

}  // namespace kelmo
