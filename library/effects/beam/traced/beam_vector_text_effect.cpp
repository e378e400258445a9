// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/beam/traced/beam_vector_text_effect.h"

#include <utility>

#include "framework/filter/effect_registry.h"

namespace kelmo {
namespace {

const bool kRegistered = RegisterEffect(
    "NLEOpenGLBeamVectorTextEffect", MakeEffect<NLEOpenGLBeamVectorTextEffect>,
    {"BeamVectorText", "DC9191D3-EE6F-B5FA-6D2F-FA122D80845D",
     "ED748B7C-AFB5-A595-8CDB-F5B16E2D4765", "3133EADA-24AB-37F7-3054-FF8EE5C410C0",
     "18CA367A-AE88-BCBB-4F65-E3A884EBA91F", "C0A8FB2B-E293-0252-3362-ACC80FED0E0A",
     "5E992C3F-2A9B-DE66-02F1-21993BA448A1", "702E46E7-9F9F-8DFD-E0C9-46AF5540801F"});

constexpr const char* kTextPathParam = "TextPath";

}  // namespace

NLEOpenGLBeamVectorTextEffect::NLEOpenGLBeamVectorTextEffect(
    std::shared_ptr<NLEFilterInfo> filterInfo)
    : NLEOpenGLBeamBitmapTraceEffect(std::move(filterInfo)) {}

int32_t NLEOpenGLBeamVectorTextEffect::InitParams() {
    FindParam(kTextPathParam);  // asked for, so that the host hands it over from the start
    return NLEOpenGLBeamBitmapTraceEffect::InitParams();
}

void NLEOpenGLBeamVectorTextEffect::CalMaskBeamParam(cv::Rect* result, NLEOpenGLBeamEffect* lines,
                                                     cv::Mat* picture, bool isHuman,
                                                     float segment) {
    NLEParamValue value;
    if (FindParamValue(kTextPathParam, value)) {
        lines->SetParam("isAdaptiveAntialiasing", kParamInt, NLEParamValue::Int(1));
        hasTextPath = true;
    } else if (!hasTextPath) {
        NLEOpenGLBeamBitmapTraceEffect::CalMaskBeamParam(result, lines, picture, isHuman, segment);
        return;
    }
    auto* const text = static_cast<TextPath*>(value.AsPointer());
    if (text && outline.Read(*text, {engine->GetWidth(), engine->GetHeight()})) {
        int32_t count = 0;
        for (const CurveLine& line : outline.Lines()) lines->SetLine(line, count++);
        lines->SetLineCount(count);
    }
    SetParam(kTextPathParam, kParamPointer, NLEParamValue::Pointer(nullptr));
    *result = outline.Box();
}

}  // namespace kelmo
