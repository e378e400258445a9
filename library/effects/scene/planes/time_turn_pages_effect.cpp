// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/scene/planes/time_turn_pages_effect.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "framework/filter/effect_registry.h"
#include "framework/textures/material_binding.h"

namespace kelmo {
namespace {

const bool kRegistered =
    RegisterEffect("NLEOpenGLTimeTurnPagesEffect", MakeEffect<NLEOpenGLTimeTurnPagesEffect>,
                   {"TimeTurnPages", "53558A36-2658-216A-9FA1-734DBF77B12A",
                    "88BECA26-9568-6911-B9CC-668AACE8E012"});

constexpr const char* kPageGuid = "508D116E-422F-4360-843A-034765A6B39B";
constexpr const char* kThemeGuid = "2825B909-5C51-FBFB-6B48-69E03D4D8FE7";

struct DigitNames {
    const char *left, *right, *nextLeft, *nextRight;
};
constexpr DigitNames kDigitNames[] = {
    {"leftNumHour", "rightNumHour", "leftNumNextHour", "rightNumNextHour"},
    {"leftNumMinute", "rightNumMinute", "leftNumNextMinute", "rightNumNextMinute"},
    {"leftNumSecond", "rightNumSecond", "leftNumNextSecond", "rightNumNextSecond"},
};

constexpr float kSheets[] = {-4.0F, -3.0F, -2.0F, 0.0F};
constexpr int kVerticesOfHalf = 6;
constexpr int kPageVertices = 4 * 2 * kVerticesOfHalf;

constexpr std::array<float, 3 * kPageVertices> MakePageVertices() {
    constexpr float kX[kVerticesOfHalf] = {-1, 1, 1, -1, 1, -1};
    constexpr float kUp[kVerticesOfHalf] = {1, 1, 0, 1, 0, 0};
    std::array<float, 3 * kPageVertices> vertices{};
    std::size_t at = 0;
    for (const float z : kSheets) {
        for (const float bottom : {0.0F, -1.0F}) {
            for (int k = 0; k < kVerticesOfHalf; ++k) {
                vertices[at++] = kX[k];
                vertices[at++] = bottom + kUp[k];
                vertices[at++] = z;
            }
        }
    }
    return vertices;
}
constexpr std::array<float, 3 * kPageVertices> kPageMesh = MakePageVertices();

}  // namespace

NLEOpenGLTimeTurnPagesEffect::NLEOpenGLTimeTurnPagesEffect(
    std::shared_ptr<NLEFilterInfo> filterInfo)
    : NLEOpenGLFilter(std::move(filterInfo)),
      pageFilter(stages.Add(kPageGuid)),
      themeFilter(stages.Add(kThemeGuid)) {
    for (int32_t i = 0; i < kMostPages; ++i) {
        pagePos[2 * i] = static_cast<float>(i);
        pagePos[2 * i + 1] = static_cast<float>(kMostPages);
    }
}

int32_t NLEOpenGLTimeTurnPagesEffect::InitEffect() {
    stages.InitEffects();
    return NLEOpenGLFilter::InitEffect();
}

int32_t NLEOpenGLTimeTurnPagesEffect::Resize(int32_t newWidth, int32_t newHeight,
                                             int32_t newStride) {
    stages.Resize(newWidth, newHeight, newStride);
    return NLEOpenGLFilter::Resize(newWidth, newHeight, newStride);
}

int32_t NLEOpenGLTimeTurnPagesEffect::InitParams() {
    engine->AddInstanceArrayVec2("uPagePos", pagePos.data(), kMostPages);
    for (const char* name : {"sHour", "sMinute", "sSecond", "sTotalTime", "sCount"}) {
        engine->AddUniformInt(name, 0);
    }
    for (const DigitNames& names : kDigitNames) {
        for (const char* name : {names.left, names.right, names.nextLeft, names.nextRight}) {
            engine->AddUniformInt(name, 0);
        }
    }
    engine->AddUniformInt("uComposed", 0);
    engine->AddRenderTarget();
    for (int i = 0; i < 2; ++i) engine->AddInputTexture(width, height, stride, true);
    return kFilterOk;
}

void NLEOpenGLTimeTurnPagesEffect::HandOverTheme() {
    if (!themeFilter) return;
    for (const auto& param : params) {
        const char* name = param->name == "Theme_blend_alpha" ? "BlendAlpha"
                           : param->name == "General_opacity" ? "Opacity"
                                                              : param->name.c_str();
        themeFilter->SetParam(name, param->type, param->value);
    }
}

ClockDigits NLEOpenGLTimeTurnPagesEffect::DigitsNow() {
    const double hundredths = static_cast<double>(Time().position) *
                              static_cast<double>(FloatOr("General_speed", 1.0F)) * 100.0;
    const auto elapsed = static_cast<int64_t>(std::clamp(hundredths, -1e15, 1e15));
    int32_t count = 0;
    if (FindInt("Number_count", count)) return ClockDigits::OfCount(int64_t{100} * count, elapsed);
    const int64_t minutes = int64_t{60} * IntOr("Number_hour", 0) + IntOr("Number_minute", 0);
    return ClockDigits::OfClock(100 * (60 * minutes + IntOr("Number_second", 0)), elapsed);
}

void NLEOpenGLTimeTurnPagesEffect::SendDigits(const ClockDigits& digits) {
    engine->SetUniformInt("sHour", digits.hour);
    engine->SetUniformInt("sMinute", digits.minute);
    engine->SetUniformInt("sSecond", digits.second);
    engine->SetUniformInt("sTotalTime", digits.total);
    engine->SetUniformInt("sCount", digits.count);
    for (std::size_t i = 0; i < digits.pages.size(); ++i) {
        engine->SetUniformInt(kDigitNames[i].left, digits.pages[i].left);
        engine->SetUniformInt(kDigitNames[i].right, digits.pages[i].right);
        engine->SetUniformInt(kDigitNames[i].nextLeft, digits.pages[i].nextLeft);
        engine->SetUniformInt(kDigitNames[i].nextRight, digits.pages[i].nextRight);
    }
}

int32_t NLEOpenGLTimeTurnPagesEffect::DoEffect(const FrameRecord&, const FrameRecord& first,
                                               FrameRecord& out, int32_t frameWidth,
                                               int32_t frameHeight, int32_t frameStride) {
    if (!engine) return kFilterFailed;
    HandOverTheme();
    UploadParams();
    const int32_t pages = std::max(IntOr("uPageCount", kMostPages), 1);
    const int32_t instances = std::min(pages, kMostPages);
    for (int32_t i = 0; i < instances; ++i) pagePos[2 * i + 1] = static_cast<float>(pages);
    engine->SetInstanceArrayVec2("uPagePos", pagePos.data(), instances);
    engine->AddVertexAttribute("position", 3, kPageMesh.data(), true, false);
    engine->AddVertexAttribute("texcoord", 3, kPageMesh.data(), true, false);
    engine->SetVertexCount(kPageVertices);
    UploadTimeAndLength(*engine, Time());
    SendDigits(DigitsNow());
    int32_t slot = 0;
    SetInputFrame(slot, first);
    BindFirstMaterial(*engine, slot, textureFrames.get());
    engine->SetBlendMode(kBlendOver);
    engine->SetDrawType(kDrawTriangles);
    FrameRecord withShadow, withLight;
    if (DrawPages(withShadow, withLight, frameWidth, frameHeight, frameStride) != kFilterOk) {
        return kFilterFailed;
    }
    for (const FrameRecord& picture : {withShadow, withLight}) {
        engine->SetInputTexture(slot++, picture, frameWidth, frameHeight, frameStride);
    }
    engine->SetUniformInt("uComposed", 1);
    return RenderTo(out);
}

int32_t NLEOpenGLTimeTurnPagesEffect::DrawPages(FrameRecord& withShadow, FrameRecord& withLight,
                                                int32_t frameWidth, int32_t frameHeight,
                                                int32_t frameStride) {
    engine->SetUniformInt("uComposed", 0);
    if (RenderPass() != kFilterOk) return kFilterFailed;
    engine->SetRenderTarget(0);
    const FrameRecord pages = GetTargetFrame(0);
    const auto run = [&](NLEOpenGLFilter* stage, const FrameRecord& picture) {
        if (!stage) return picture;
        return RunSubFilter(*stage, *this, pages, picture, frameWidth, frameHeight, frameStride);
    };
    withShadow = run(pageFilter, pages);
    withLight = run(themeFilter, withShadow);
    return kFilterOk;
}

}  // namespace kelmo
