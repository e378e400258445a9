// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/beam/lightning/lightning_power_effect.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <opencv2/imgproc.hpp>
#include <utility>

#include "effects/beam/lightning/beam_bolts.h"
#include "effects/beam/lightning/bolt_branches.h"
#include "effects/beam/lightning/frame_edge_hit.h"
#include "effects/beam/lightning/random_fraction.h"
#include "framework/filter/effect_registry.h"
#include "framework/filter/filter_guids.h"
#include "framework/textures/material_binding.h"
#include "platform/random.h"

namespace kelmo {
namespace {

constexpr const char* kRadialHandsGuid = "7607D2AA-5F28-47F5-A737-C77904315896";
constexpr const char* kGroundedHandsGuid = "14C64749-25E5-41AD-9DE3-69CA27D9A3E3";
constexpr const char* kForearmRaysGuid = "0EB82802-7C6D-4EB0-B761-26E096999AE8";
constexpr const char* kAnchorArcGuid = "F2DFF6FE-D88E-48A0-8CB5-7247F6BFD1AB";

const bool kRegistered =
    RegisterEffect("NLEOpenGLLightningPowerEffect", MakeEffect<NLEOpenGLLightningPowerEffect>,
                   {kRadialHandsGuid, kGroundedHandsGuid, kForearmRaysGuid, kAnchorArcGuid});

constexpr float kCrownRatio = 0.5F;
constexpr float kBoltRatio = 0.37F;
constexpr float kDetail = 0.009F;
constexpr int kBranches = 2;
constexpr float kBranchAngle = 13.665F;
constexpr int32_t kFlickerSteps = 100;
/// Bolts keep their shape on every fourth frame.
constexpr int32_t kSeedPeriod = 4;
constexpr int32_t kBothHands = 2;
constexpr float kPi = static_cast<float>(CV_PI);

/// What the line renderer knows under its own names: width and strength along a bolt.
constexpr const char* kNodes[4] = {"uZoomStartNode", "uZoomEndNode", "uAlphaStartNode",
                                   "uAlphaEndNode"};
constexpr const char* kMainNodes[4] = {"uMainZoomStartNode", "uMainZoomEndNode",
                                       "uMainAlphaStartNode", "uMainAlphaEndNode"};
constexpr const char* kBranchNodes[4] = {"uBranchZoomStartNode", "uBranchZoomEndNode",
                                         "uBranchAlphaStartNode", "uBranchAlphaEndNode"};

constexpr const char* kCenterX[] = {"center_x", "center_x2"};
constexpr const char* kCenterY[] = {"center_y", "center_y2"};
constexpr const char* kShowBall[] = {"showLeftBall", "showRightBall"};

enum Layer : int32_t { kBoltLayer = 0, kFinalLayer = 1 };

WorkingSize BeamSize(int32_t frameWidth, int32_t frameHeight) {
    return frameWidth > frameHeight ? WorkingSize{1280, 720, 5120} : WorkingSize{720, 1280, 2880};
}

int32_t Pixel(float value) {
    constexpr float kFar = 1e6F;
    if (std::isnan(value)) return 0;
    return static_cast<int32_t>(std::rint(std::clamp(value, -kFar, kFar)));
}

}  // namespace

NLEOpenGLLightningPowerEffect::Mode NLEOpenGLLightningPowerEffect::ModeOf(
    const NLEFilterInfo* info) {
    if (!info) return Mode::kNone;
    if (info->guid == kRadialHandsGuid) return Mode::kRadialHands;
    if (info->guid == kGroundedHandsGuid) return Mode::kGroundedHands;
    if (info->guid == kForearmRaysGuid) return Mode::kForearmRays;
    return info->guid == kAnchorArcGuid ? Mode::kAnchorArc : Mode::kNone;
}

NLEOpenGLLightningPowerEffect::NLEOpenGLLightningPowerEffect(
    std::shared_ptr<NLEFilterInfo> filterInfo)
    : NLEOpenGLFilter(filterInfo),
      mode(ModeOf(filterInfo.get())),
      mainBeam(beams.AddAs<NLEOpenGLBeamEffect>(kBeamGuid)),
      branchBeam(beams.AddAs<NLEOpenGLBeamEffect>(kBeamGuid)),
      eclosion(feathers.AddAs<NLEOpenGLBeamEclosionEffect>(kBeamEclosionGuid)) {
    needCpuFrame = 1;
}

int32_t NLEOpenGLLightningPowerEffect::InitParams() {
    engine->AddRenderTarget();
    // With the clip: layer, feathered layer, mask, all clamped at the edge.
    for (int i = 0; i < 3; ++i) engine->AddInputTexture(width, height, stride, true);
    engine->AddUniformVec4("uBound", 0.0F, 0.0F, 1.0F, 1.0F);
    engine->AddUniformFloat("uViewSizeWidth", static_cast<float>(WorkingSize::Wide().width));
    engine->AddUniformFloat("uViewSizeHeight", static_cast<float>(WorkingSize::Wide().height));
    for (const ColorUniform* color : {&coreColor, &glowColor, &ballColor}) color->Declare(*engine);
    for (std::size_t hand = 0; hand < HandPoints::kSides; ++hand) {
        engine->AddUniformFloat(kCenterX[hand], 0.5F);
        engine->AddUniformFloat(kCenterY[hand], 0.5F);
        engine->AddUniformFloat(kShowBall[hand], 0.0F);
    }
    engine->AddUniformInt("calLayer", kBoltLayer);
    return kFilterOk;
}

int32_t NLEOpenGLLightningPowerEffect::InitEffect() {
    beams.InitEffects();
    feathers.InitEffects();
    return NLEOpenGLFilter::InitEffect();
}

int32_t NLEOpenGLLightningPowerEffect::Resize(int32_t newWidth, int32_t newHeight,
                                              int32_t newStride) {
    beams.Resize(BeamSize(newWidth, newHeight));
    feathers.Resize(WorkingSize::For(newWidth, newHeight));
    return NLEOpenGLFilter::Resize(newWidth, newHeight, newStride);
}

float NLEOpenGLLightningPowerEffect::FramesASecond() const {
    const float rate = GetFrameRate();
    return rate > 0.0F ? rate : kTicksPerSecond;
}

/// Every frame has bolts of its own but each fourth, which keeps those of the frame drawn before.
void NLEOpenGLLightningPowerEffect::Seed() {
    if (position % kSeedPeriod != 0) seed = position;
    Srand(static_cast<uint32_t>(seed));
}

void NLEOpenGLLightningPowerEffect::SendValues() {
    UploadParams();
    displaceScale = FloatOr("displace", displaceScale);
    float radius = 0.0F;
    if (FindFloat("uRadius", radius)) {
        if (mode == Mode::kRadialHands) {
            mainBeam->SetParam("uRadius", kParamFloat, NLEParamValue::Float(radius));
        } else {
            radius *= RandomFraction(kFlickerSteps) * 0.2F + 0.8F;
            mainBeam->SetParam("uRadius", kParamFloat, NLEParamValue::Float(radius));
            branchBeam->SetParam("uRadius", kParamFloat, NLEParamValue::Float(radius));
        }
    }
    const std::pair<const char*, const ColorUniform*> colors[] = {
        {"coreColor", &coreColor}, {"glowColor", &glowColor}, {"ballColor", &ballColor}};
    for (const auto& [name, uniform] : colors) {
        int32_t rgb = 0;
        if (FindInt(name, rgb)) uniform->Set(*engine, rgb);
    }
    int32_t feather = 0;
    if (eclosion && FindInt("uEclosion", feather)) {
        eclosion->SetParam("uEclosion", kParamInt, NLEParamValue::Int(feather));
    }
    for (const char* name : kShowBall) engine->SetUniformFloat(name, 0.0F);
    UploadGlobalTime(*engine, Time());
}

void NLEOpenGLLightningPowerEffect::FlickerBalls() {
    for (const char* name : {"ballRadius", "ballIntensity"}) {
        float value = 0.0F;
        if (!FindFloat(name, value)) continue;
        engine->SetUniformInt(
            name, static_cast<int32_t>(value * (RandomFraction(kFlickerSteps) * 0.5F + 0.5F)));
    }
}

bool NLEOpenGLLightningPowerEffect::FindHands(const Frame& frame) {
    cv::Mat picture;
    GetMat(picture, frame.first);
    if (picture.empty()) return false;
    cv::resize(picture, scaledInput, cv::Size(frame.beamSize.width, frame.beamSize.height), 0.0,
               0.0, cv::INTER_LINEAR);
    const auto found = poseHandle.Analyse<AIDATA::HumanPoseDatas>(
        {nullptr, frame.width, frame.height, frame.stride},
        {scaledInput.data, scaledInput.cols, scaledInput.rows,
         static_cast<int32_t>(scaledInput.step)});
    if (!found || found->persons.empty()) return false;
    hands = HandPoints::Of(found->persons.front());
    hands.Choose(IntOr("leftOrRight", kBothHands));
    return true;
}

void NLEOpenGLLightningPowerEffect::ShowHand(std::size_t hand) {
    const cv::Point2f& place = *hands.hands[hand];
    engine->SetUniformFloat(kCenterX[hand], place.x * 0.5F + 0.5F);
    engine->SetUniformFloat(kCenterY[hand], place.y * 0.5F + 0.5F);
    engine->SetUniformFloat(kShowBall[hand], 1.0F);
}

void NLEOpenGLLightningPowerEffect::Bolt(const cv::Point2f& start, const cv::Point2f& end,
                                         NLEOpenGLBeamEffect& branches) {
    const float ratio = mode == Mode::kRadialHands ? kCrownRatio : kBoltRatio;
    const float length = std::hypot(end.x - start.x, end.y - start.y);
    path.Clear();
    FractalBolt({start, end}, {length * ratio, kDetail, displaceScale}, &path, AppendTo(*mainBeam));
    SortPointsByDistance(path.Points(), start);
    GenerateBranches(path.Points(), length, kBranches,
                     {0.0F, kBranchAngle, ratio, kDetail, displaceScale}, AppendTo(branches));
}

void NLEOpenGLLightningPowerEffect::Reach(const cv::Point2f& place, const WorkingSize& size) {
    reach.emplace_back(Pixel((place.x / 2.0F + 0.5F) * static_cast<float>(size.width)),
                       Pixel((0.5F - place.y / 2.0F) * static_cast<float>(size.height)));
}

void NLEOpenGLLightningPowerEffect::SendBound(const WorkingSize& size) {
    const cv::Rect box = reach.empty() ? cv::Rect() : cv::boundingRect(reach);
    const auto columns = static_cast<float>(size.width);
    const auto rows = static_cast<float>(size.height);
    engine->SetUniformVec4(
        "uBound", static_cast<float>(box.x) / columns, static_cast<float>(box.y) / rows,
        static_cast<float>(box.br().x) / columns, static_cast<float>(box.br().y) / rows);
}

int32_t NLEOpenGLLightningPowerEffect::RadialHands(const Frame& frame) {
    constexpr int kBolts = 10;
    constexpr float kStep = 0.62831855F;
    if (!FindHands(frame)) return kFilterFailed;
    rotation =
        std::remainder(rotation + CrownTurn(position, GetFrameRate()) * kPi / 180.0F, 2.0F * kPi);
    const float length = FloatOr("lightningLength", 0.0F);
    for (std::size_t hand = 0; hand < HandPoints::kSides; ++hand) {
        if (!hands.hands[hand]) continue;
        const cv::Point2f& center = *hands.hands[hand];
        for (int k = 1; k <= kBolts; ++k) {
            const float angle = rotation + static_cast<float>(k) * kStep;
            const cv::Point2f end(center.x + length * std::cos(angle),
                                  center.y + length * std::sin(angle));
            Bolt(center, end, *mainBeam);
            Reach(end, frame.workingSize);
        }
        ShowHand(hand);
    }
    SendBound(frame.workingSize);
    int32_t slot = 0;
    SetInputFrame(slot, frame.first);
    DrawBeam(slot, *mainBeam, kNodes, frame);
    Feather(slot, mainBeam->GetTargetFrame(0), frame);
    return RenderTo(frame.out);
}

int32_t NLEOpenGLLightningPowerEffect::GroundedHands(const Frame& frame) {
    /// Where the bolts strike when they do not wander.
    constexpr float kStrike[] = {0.5F, -0.5F};
    if (!FindHands(frame)) return kFilterFailed;
    const float rate = FramesASecond();
    const float offset = wobble.Next(rate, 0.5F / rate);
    for (std::size_t hand = 0; hand < HandPoints::kSides; ++hand) {
        if (!hands.hands[hand]) continue;
        const cv::Point2f end(kStrike[hand] + offset, -1.0F);
        Bolt(*hands.hands[hand], end, *branchBeam);
        Reach(*hands.hands[hand], frame.workingSize);
        Reach(end, frame.workingSize);
        ShowHand(hand);
    }
    SendBound(frame.workingSize);
    return DrawLayers(frame);
}

int32_t NLEOpenGLLightningPowerEffect::ForearmRays(const Frame& frame) {
    if (!FindHands(frame)) return kFilterFailed;
    for (std::size_t hand = 0; hand < HandPoints::kSides; ++hand) {
        if (!hands.hands[hand] || !hands.elbows[hand]) continue;
        const auto end = FrameEdgeHit(*hands.elbows[hand], *hands.hands[hand]);
        if (!end) return kFilterFailed;
        Bolt(*hands.hands[hand], *end, *branchBeam);
        Reach(*hands.hands[hand], frame.workingSize);
        Reach(*end, frame.workingSize);
        ShowHand(hand);
    }
    SendBound(frame.workingSize);
    return DrawLayers(frame);
}

int32_t NLEOpenGLLightningPowerEffect::AnchorArc(const Frame& frame) {
    cv::Mat picture;
    GetMat(picture, frame.first);
    if (picture.empty()) return kFilterOk;
    cv::resize(picture, scaledInput, cv::Size(frame.workingSize.width, frame.workingSize.height),
               0.0, 0.0, cv::INTER_LINEAR);
    BrightEnds ends;
    if (!brightEnds.FindAnchors(scaledInput, ends, maskPicture)) return kFilterOk;
    cv::blur(maskPicture, maskPicture, cv::Size(3, 3));
    ends.topLeft += {FloatOr("sourcePoint_x1", 0.0F), FloatOr("sourcePoint_y1", 0.0F)};
    ends.bottomRight += {FloatOr("sourcePoint_x2", 0.0F), FloatOr("sourcePoint_y2", 0.0F)};
    hands.hands = {ends.topLeft, ends.bottomRight};
    for (std::size_t end = 0; end < HandPoints::kSides; ++end) {
        engine->SetUniformFloat(kCenterX[end], hands.hands[end]->x * 0.5F + 0.5F);
        engine->SetUniformFloat(kCenterY[end], hands.hands[end]->y * 0.5F + 0.5F);
    }
    const float rate = FramesASecond();
    const float offset = wobble.Next(rate, std::abs(ends.topLeft.y - ends.bottomRight.y) / rate);
    Bolt(ends.topLeft, {ends.bottomRight.x, ends.bottomRight.y - offset}, *branchBeam);
    Bolt(ends.bottomRight, {ends.topLeft.x, ends.topLeft.y + offset}, *branchBeam);
    return DrawLayers(frame);
}

void NLEOpenGLLightningPowerEffect::DrawBeam(int32_t& slot, NLEOpenGLBeamEffect& beam,
                                             const char* const (&names)[4], const Frame& frame) {
    for (std::size_t i = 0; i < 4; ++i) {
        float value = 0.0F;
        if (FindFloat(names[i], value)) {
            beam.SetParam(kNodes[i], kParamFloat, NLEParamValue::Float(value));
        }
    }
    BindStageResult(*engine, slot, RunBolts(beam, *this, frame.second, frame.first, frame.beamSize),
                    frame.beamSize);
}

void NLEOpenGLLightningPowerEffect::Feather(int32_t& slot, const FrameRecord& picture,
                                            const Frame& frame) {
    if (!eclosion) return;
    eclosion->SetParam("uViewSizeWidth", kParamFloat,
                       NLEParamValue::Float(static_cast<float>(frame.workingSize.width)));
    eclosion->SetParam("uViewSizeHeight", kParamFloat,
                       NLEParamValue::Float(static_cast<float>(frame.workingSize.height)));
    eclosion->inputOverride = TextureReference(picture);
    const FrameRecord feathered = RunSubFilter(*eclosion, *this, frame.second, frame.first,
                                               frame.width, frame.height, frame.stride);
    engine->SetInputTexture(slot++, feathered, frame.width, frame.height, frame.stride);
}

int32_t NLEOpenGLLightningPowerEffect::DrawLayers(const Frame& frame) {
    engine->SetUniformInt("calLayer", kBoltLayer);
    int32_t slot = 0;
    DrawBeam(slot, *mainBeam, kMainNodes, frame);
    DrawBeam(slot, *branchBeam, kBranchNodes, frame);
    if (RenderPass() != kFilterOk) return kFilterFailed;
    engine->SetRenderTarget(0);
    engine->SetUniformInt("calLayer", kFinalLayer);
    const FrameRecord layer = GetTargetFrame(0);
    slot = 0;
    SetInputFrame(slot, frame.first);
    engine->SetInputTexture(slot++, layer, frame.width, frame.height, frame.stride);
    Feather(slot, layer, frame);
    if (mode == Mode::kAnchorArc) {
        engine->SetInputImage(slot++, maskPicture.data, maskPicture.cols, maskPicture.rows,
                              static_cast<int32_t>(maskPicture.step), maskPicture.channels(), false,
                              0);
        BindFirstMaterial(*engine, slot, textureFrames.get());
    }
    return RenderTo(frame.out);
}

int32_t NLEOpenGLLightningPowerEffect::DoEffect(const FrameRecord& second, const FrameRecord& first,
                                                FrameRecord& out, int32_t frameWidth,
                                                int32_t frameHeight, int32_t frameStride) {
    if (!engine || !mainBeam || !branchBeam) return kFilterFailed;
    const Frame frame{second,
                      first,
                      out,
                      frameWidth,
                      frameHeight,
                      frameStride,
                      BeamSize(frameWidth, frameHeight),
                      WorkingSize::For(frameWidth, frameHeight)};
    if (mode != Mode::kRadialHands) Seed();
    SendValues();
    engine->SetUniformFloat("uViewSizeWidth", static_cast<float>(frame.workingSize.width));
    engine->SetUniformFloat("uViewSizeHeight", static_cast<float>(frame.workingSize.height));
    if (mode == Mode::kGroundedHands || mode == Mode::kForearmRays) FlickerBalls();
    mainBeam->SetLineCount(0);
    branchBeam->SetLineCount(0);
    reach.clear();
    switch (mode) {
        case Mode::kRadialHands:
            return RadialHands(frame);
        case Mode::kGroundedHands:
            return GroundedHands(frame);
        case Mode::kForearmRays:
            return ForearmRays(frame);
        case Mode::kAnchorArc:
            return AnchorArc(frame);
        case Mode::kNone:
            break;
    }
    return kFilterFailed;
}

}  // namespace kelmo
