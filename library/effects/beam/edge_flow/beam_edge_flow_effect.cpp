// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/beam/edge_flow/beam_edge_flow_effect.h"

#include <algorithm>
#include <cmath>
#include <opencv2/imgproc.hpp>
#include <utility>

#include "effects/beam/random_color.h"
#include "effects/image/dual_kawase_blur.h"
#include "framework/filter/effect_registry.h"
#include "framework/filter/filter_guids.h"
#include "framework/shared/picture_record.h"
#include "framework/shared/working_size.h"
#include "framework/textures/material_binding.h"
#include "platform/host_access.h"
#include "platform/random.h"

namespace kelmo {
namespace {

std::unique_ptr<NLEOpenGLFilter> MakeEdgeFlow(std::shared_ptr<NLEFilterInfo> info, const char*) {
    return std::make_unique<NLEOpenGLBeamEdgeFlowEffect>(std::move(info), kBeamGuid,
                                                         kBeamEclosionGuid, true);
}

/// One look each, by its shader and its values alone.
const bool kRegistered = RegisterEffect("NLEOpenGLBeamEdgeFlowEffect", MakeEdgeFlow,
                                        {"BeamEdgeFlow",
                                         "D0AF64B4-D133-4B73-B64D-AF3470F10E06",
                                         "51F31FE6-4B01-6EE3-1FEA-F3819CFA27E6",
                                         "DC701355-0655-CD4A-7065-D8AA346394E7",
                                         "8BA75A82-9A5A-3D05-B156-2155BC1E123E",
                                         "A653EECF-24EF-988F-7029-345FD0E4A774",
                                         "66DD6E22-4209-F8FF-A312-B09CBAA94D4C",
                                         "14ECBC85-F9E7-DB9A-3733-17EE8240A8D6",
                                         "2964EE3E-BF3F-1AF9-6B56-147206F18197",
                                         "A0C9415F-3BD6-8E5C-E553-BE076A275459",
                                         "0A40B198-AB41-42DC-952F-BCFC07676839",
                                         "6CBF0B6C-24D8-45C2-9060-FAFBD0115C10",
                                         "4D9DD787-AF8B-4A12-AC2B-EA33180BB404",
                                         "AA835DBC-B37D-3EA3-A278-F4D32DF01BB6",
                                         "69A12A47-C5C6-AC70-3CF7-C2F0640B39DF",
                                         "FB87E4B2-3BA3-7AAC-ECBB-22D537D562B3",
                                         "DE74A320-0B30-F2C7-EFCE-E111FE819787",
                                         "7A69B028-6439-6BB5-479B-2286E2911F34",
                                         "990D2343-2DE9-DCA5-DC35-0DD59BBAFE3D",
                                         "1ED70B9A-8306-9352-EE40-8193E81673BE",
                                         "8AA7317C-4CAC-7320-2167-D50CA7105666",
                                         "DC89D5F7-FF8C-FBE2-49FB-BA91C4CB82AA",
                                         "7E3E729D-017A-93C6-2401-63DFEFB0C9CD",
                                         "1ADEE8D7-8617-36D6-CEFE-016D9566EADD",
                                         "B64AC2D1-85BA-2E52-4BB0-2F863823105F",
                                         "293FAF9D-6744-5941-8897-E581E1457D5E",
                                         "4BF00650-A956-D8D1-8A58-EF86DAD5F0B0",
                                         "C4802B85-9C76-A887-E9A2-1A01410E3E41",
                                         "3D75FB25-62B5-6504-479B-2DDC17F8A592"});

constexpr double kInside = 20.0;
constexpr double kMarked = 250.0;
constexpr int kBorder = 5;
constexpr float kUsualSeconds = 2.0F;

enum RandomColor : int32_t { kEachFrame = 1, kGrayPulse = 2, kGrayFlicker = 3 };

int32_t StrideOf(const cv::Size& size) {
    return size.width * 4;
}

void SetFloat(NLEOpenGLFilter& stage, const char* name, float value) {
    stage.SetParam(name, kParamFloat, NLEParamValue::Float(value));
}

void SetInt(NLEOpenGLFilter& stage, const char* name, int32_t value) {
    stage.SetParam(name, kParamInt, NLEParamValue::Int(value));
}

/// Two streaks that run round the frame half a turn apart.
void WindowLines(NLEOpenGLBeamEffect& lines) {
    constexpr float kFar = 0.97F;
    const cv::Point2f corners[4] = {{kFar, kFar}, {kFar, -kFar}, {-kFar, -kFar}, {-kFar, kFar}};
    constexpr float kSecond[4] = {1.0F, 0.0F, 1.0F, 1.0F};
    for (int32_t i = 0; i < 8; ++i) {
        const std::size_t from = static_cast<std::size_t>(i < 4 ? i : i + 2) % 4;
        const float start = static_cast<float>(i % 4) * 0.25F;
        lines.SetLine(
            CurveLine::Straight(corners[from], corners[(from + 1) % 4], start, start + 0.25F), i);
        if (i >= 4) lines.SetLineColor(kSecond, i);
    }
    lines.SetLineCount(8);
}

}  // namespace

NLEOpenGLBeamEdgeFlowEffect::NLEOpenGLBeamEdgeFlowEffect(std::shared_ptr<NLEFilterInfo> filterInfo,
                                                         const char* beamGuid,
                                                         const char* eclosionGuid,
                                                         bool needsSegmentation)
    : NLEOpenGLCombineFilter(std::move(filterInfo)),
      segmentation(needsSegmentation ? std::make_unique<AIFilterHandle>(kAIMaskFilter) : nullptr),
      ownedBeam(beams.AddAs<NLEOpenGLBeamEffect>(beamGuid)),
      eclosion(feathers.Add(eclosionGuid)),
      beam(ownedBeam) {
    needCpuFrame = 1;
}

void NLEOpenGLBeamEdgeFlowEffect::SetFixedBound(const float values[4]) {
    std::copy_n(values, 4, bound);
    boundFixed = true;
}

int32_t NLEOpenGLBeamEdgeFlowEffect::InitParams() {
    for (int i = 0; i < 2; ++i) engine->AddInputTexture(width, height, stride, true);
    engine->AddUniformVec4("uBound", 0.0F, 0.0F, 1.0F, 1.0F);
    engine->AddUniformFloat("uStep", 1.0F);
    engine->AddUniformFloat("uViewSizeWidth", static_cast<float>(WorkingSize::Wide().width));
    engine->AddUniformFloat("uViewSizeHeight", static_cast<float>(WorkingSize::Wide().height));
    engine->AddUniformFloat("showSrc", 1.0F);
    engine->AddUniformFloat("uTime", 0.0F);
    engine->AddUniformFloat("uProgress", 0.0F);
    firstColor.Declare(*engine);
    secondColor.Declare(*engine);
    engine->AddUniformInt("color_gray", 255);
    return kFilterOk;
}

int32_t NLEOpenGLBeamEdgeFlowEffect::InitEffect() {
    beams.InitEffects();
    feathers.InitEffects();
    return NLEOpenGLCombineFilter::InitEffect();
}

void NLEOpenGLBeamEdgeFlowEffect::GetWorkSizes(int32_t frameWidth, int32_t frameHeight,
                                               cv::Size* maskSize, cv::Size* beamSize,
                                               cv::Size* eclosionSize) {
    const WorkingSize size = WorkingSize::For(frameWidth, frameHeight);
    *maskSize = *beamSize = *eclosionSize = cv::Size(size.width, size.height);
}

int32_t NLEOpenGLBeamEdgeFlowEffect::Resize(int32_t newWidth, int32_t newHeight,
                                            int32_t newStride) {
    cv::Size maskSize, beamSize, eclosionSize;
    GetWorkSizes(newWidth, newHeight, &maskSize, &beamSize, &eclosionSize);
    if (segmentation && mask.size() != maskSize) mask = cv::Mat::zeros(maskSize, CV_8UC1);
    beams.Resize(beamSize.width, beamSize.height, StrideOf(beamSize));
    feathers.Resize(eclosionSize.width, eclosionSize.height, StrideOf(eclosionSize));
    return NLEOpenGLCombineFilter::Resize(newWidth, newHeight, newStride);
}

float NLEOpenGLBeamEdgeFlowEffect::CycleOf(int32_t cycle) const {
    return CycleFraction(Time().Tick(), static_cast<float>(cycle));
}

void NLEOpenGLBeamEdgeFlowEffect::ClearLines(NLEOpenGLBeamEffect& lines) {
    constexpr float kClear[4] = {};
    lines.SetLine(CurveLine(), 0);
    lines.SetLineColor(kClear, 0);
    lines.SetLineCount(1);
}

void NLEOpenGLBeamEdgeFlowEffect::UpdateBeamProgress(NLEOpenGLBeamEffect* lines, bool loop,
                                                     int32_t cycle) {
    if (loop) {
        const float turn = CycleOf(cycle);
        lines->SetProgress(turn, turn + 1.0F);
        return;
    }
    const float seconds = FloatOr("animation_duration", kUsualSeconds);
    const float end = seconds > 0.0F ? std::min(Time().position / seconds, 1.0F) : 1.0F;
    lines->SetProgress(0.0F, end);
    engine->SetUniformFloat("uProgress", end);
}

void NLEOpenGLBeamEdgeFlowEffect::PrepareDraw(int32_t, const FrameRecord&, int32_t, int32_t,
                                              int32_t) {}

void NLEOpenGLBeamEdgeFlowEffect::CalMaskBeamParam(cv::Rect* result, NLEOpenGLBeamEffect* lines,
                                                   cv::Mat* picture, bool isHuman, float segment) {
    *result = cv::Rect();
    cv::threshold(*picture, binary, kInside, kMarked, cv::THRESH_BINARY);
    if (isHuman) {
        cv::morphologyEx(binary, binary, cv::MORPH_CLOSE,
                         cv::getStructuringElement(cv::MORPH_RECT, {5, 5}));
    }
    framed.create(binary.size(), CV_8UC1);
    framed.setTo(0);
    const cv::Rect inside(kBorder, kBorder, binary.cols - 2 * kBorder, binary.rows - 2 * kBorder);
    if (inside.width > 0 && inside.height > 0) binary(inside).copyTo(framed(inside));
    try {
        cv::findContours(framed, contours, isHuman ? cv::RETR_EXTERNAL : cv::RETR_LIST,
                         cv::CHAIN_APPROX_SIMPLE);
    } catch (const cv::Exception& error) {
        LogError("NLEOpenGLBeamEdgeFlowEffect:CalMaskBeamParam findContours:%s", error.what());
        return;
    }
    if (contours.empty()) {
        ClearLines(*lines);
        return;
    }
    std::sort(contours.begin(), contours.end(),
              [](const auto& a, const auto& b) { return a.size() > b.size(); });
    const bool all = !isHuman || IntOr("isMutiHuman", 0) == 1;
    int32_t count = 0;
    for (std::size_t i = 0; i < (all ? contours.size() : 1); ++i) {
        *result |= cv::boundingRect(contours[i]);
        converter.Convert(contours[i], framed.size(), segment, true, isHuman,
                          [&](const CurveLine& line) { lines->SetLine(line, count++); });
    }
    if (count > 0) lines->SetLineCount(count);
}

void NLEOpenGLBeamEdgeFlowEffect::ChooseColors() {
    const int32_t choice = IntOr("randomColor", 0);
    if (choice == kEachFrame) {
        colorValue = DrawRandomColor();
    } else if (choice == kGrayPulse) {
        const float part =
            static_cast<float>(position % durationFrames) / static_cast<float>(durationFrames);
        colorValue = static_cast<int32_t>(std::sin(part) * 255.0F) * 0x010101;
    } else {
        if (choice == kGrayFlicker && drawCount % 3 != 0) {
            engine->SetUniformInt("color_gray", Rand() % 255);
        }
        colorValue = IntOr("color", colorValue);
    }
    engine->SetUniformInt("color", colorValue);
    firstColor.Set(*engine, colorValue);
    int32_t second = 0;
    if (FindInt("color1", second)) {
        secondColor.Set(*engine, choice == kEachFrame ? DrawRandomColor() : second);
    }
}

bool NLEOpenGLBeamEdgeFlowEffect::MakeLines(const FrameRecord& first, const cv::Size& maskSize,
                                            cv::Rect& box, bool human) {
    if (boundFixed) return true;
    if (IntOr("isWindow", 0) == 1) {
        WindowLines(*beam);
        box = cv::Rect({}, maskSize);
        return true;
    }
    if (human) {
        if (!GetHumanMask(maskFrame, segmentation ? segmentation->Get() : nullptr, mask, first,
                          true, true, &maskSize, true, 1)) {
            return false;
        }
    } else {
        cv::Mat picture;
        GetMat(picture, first);
        if (picture.empty()) return false;
        cv::resize(picture, binary, maskSize, 0.0, 0.0, cv::INTER_LINEAR);
        cv::cvtColor(binary, mask, cv::COLOR_RGBA2GRAY);
        maskFrame = PictureRecord(mask);
    }
    CalMaskBeamParam(&box, beam, &mask, human, minSegment);
    return true;
}

void NLEOpenGLBeamEdgeFlowEffect::SendBound(const cv::Rect& box, const cv::Size& maskSize,
                                            const cv::Size& eclosionSize) {
    int32_t radius = 0;
    if (FindInt("uEclosion", radius)) {
        eclosionRadius = radius;
        if (eclosion) {
            SetInt(*eclosion, "uEclosion", radius);
            SetInt(*eclosion, "uIterations", radius / 30 + 1);
            SetFloat(*eclosion, "uOffset", static_cast<float>(radius % 30) / 30.0F + 1.0F);
        }
    }
    const auto margin = static_cast<float>(eclosionRadius / 2 + 1);
    const auto columns = static_cast<float>(maskSize.width);
    const auto rows = static_cast<float>(maskSize.height);
    if (!boundFixed) {
        bound[0] = (static_cast<float>(box.x) - margin) / columns;
        bound[1] = (static_cast<float>(box.y) - margin) / rows;
        bound[2] = (static_cast<float>(box.x + box.width) + margin) / columns;
        bound[3] = (static_cast<float>(box.y + box.height) + margin) / rows;
    }
    engine->SetUniformVec4("uBound", bound[0], bound[1], bound[2], bound[3]);
    if (!eclosion) return;
    constexpr const char* kNames[] = {"uBoundLeftX", "uBoundLeftY", "uBoundRightX", "uBoundRightY"};
    for (std::size_t i = 0; i < 4; ++i) SetFloat(*eclosion, kNames[i], bound[i]);
    SetFloat(*eclosion, "uViewSizeWidth", static_cast<float>(eclosionSize.width));
    SetFloat(*eclosion, "uViewSizeHeight", static_cast<float>(eclosionSize.height));
}

void NLEOpenGLBeamEdgeFlowEffect::DrawStages(int32_t& slot, const FrameRecord& second,
                                             const FrameRecord& first, const cv::Size& beamSize,
                                             int32_t frameWidth, int32_t frameHeight,
                                             int32_t frameStride) {
    RunSubFilter(*beam, *this, second, first, beamSize.width, beamSize.height, StrideOf(beamSize));
    const FrameRecord lines = beam->GetTargetFrame(0);
    engine->SetInputTexture(slot++, lines, beamSize.width, beamSize.height, StrideOf(beamSize));
    if (!eclosion) return;
    if (auto* const feather = dynamic_cast<NLEOpenGLBeamEclosionEffect*>(eclosion)) {
        feather->inputOverride = TextureReference(lines);
    } else if (auto* const blur = dynamic_cast<NLEOpenGLDualKawaseBlur*>(eclosion)) {
        blur->inputOverride = TextureReference(lines);
    }
    const FrameRecord feathered =
        RunSubFilter(*eclosion, *this, second, first, frameWidth, frameHeight, frameStride);
    engine->SetInputTexture(slot++, feathered, frameWidth, frameHeight, frameStride);
}

int32_t NLEOpenGLBeamEdgeFlowEffect::DoEffect(const FrameRecord& second, const FrameRecord& first,
                                              FrameRecord& out, int32_t frameWidth,
                                              int32_t frameHeight, int32_t frameStride) {
    maskFrame = FrameRecord();
    if (!engine || !beam) return kFilterFailed;
    HandOverParams(params, *beam);
    UploadParams();
    UploadGlobalTime(*engine, Time());
    float cycle = 0.0F;
    if (FindFloat("duration", cycle)) {
        constexpr float kLongest = 1e6F;
        durationFrames =
            1 + static_cast<int32_t>(std::clamp(std::isnan(cycle) ? 0.0F : cycle, 0.0F, kLongest) *
                                     1000.0F);
    }
    const bool human = IntOr("isHuman", 1) == 1;
    float segment = 0.0F;
    if (FindFloat("segment", segment)) minSegment = segment / 1000.0F;
    Srand(static_cast<uint32_t>(position));
    ChooseColors();
    cv::Size maskSize, beamSize, eclosionSize;
    GetWorkSizes(frameWidth, frameHeight, &maskSize, &beamSize, &eclosionSize);
    cv::Rect box;
    if (!MakeLines(first, maskSize, box, human)) return kFilterFailed;
    SendBound(box, maskSize, eclosionSize);
    const float area = static_cast<float>(frameWidth) * static_cast<float>(frameHeight) /
                       static_cast<float>(std::max(maskSize.area(), 1));
    engine->SetUniformFloat("uStep", std::trunc(area / 48.0F) * 0.6F + 1.0F);
    engine->SetUniformFloat("uTime", Time().Tick());
    if (IntOr("isWindow", 0) == 1 && !boundFixed) {
        const float turn = CycleOf(durationFrames);
        beam->SetProgress(0.5F * turn, 0.5F * turn + 0.5F);
    } else if (!boundFixed) {
        UpdateBeamProgress(beam, human, durationFrames);
    }
    int32_t slot = 0;
    SetInputFrame(slot, first);
    DrawStages(slot, second, first, beamSize, frameWidth, frameHeight, frameStride);
    BindFirstMaterial(*engine, slot, textureFrames.get());
    engine->SetUniformFloat("uViewSizeWidth", static_cast<float>(maskSize.width));
    engine->SetUniformFloat("uViewSizeHeight", static_cast<float>(maskSize.height));
    engine->SetUniformFloat("showSrc", showSrc ? 1.0F : 0.0F);
    PrepareDraw(slot, first, frameWidth, frameHeight, frameStride);
    if (RenderTo(out) != kFilterOk) return kFilterFailed;
    ++drawCount;
    return kFilterOk;
}

}  // namespace kelmo
