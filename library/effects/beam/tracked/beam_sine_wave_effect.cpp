// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/beam/tracked/beam_sine_wave_effect.h"

#include <algorithm>
#include <utility>

#include "framework/filter/effect_registry.h"
#include "framework/filter/filter_guids.h"
#include "framework/shared/working_size.h"
#include "framework/textures/material_binding.h"

namespace kelmo {
namespace {

const bool kSineRegistered =
    RegisterEffect("NLEOpenGLBeamSineWaveEffect", MakeEffect<NLEOpenGLBeamSineWaveEffect>,
                   {"D6D42170-AB20-4345-9A86-DB13BC6C7ADA"});
const bool kCharmRegistered =
    RegisterEffect("NLEOpenGLCharmBeamEffect", MakeEffect<NLEOpenGLCharmBeamEffect>,
                   {"50C300CE-1D8B-4677-8374-4D94F8E2D37F"});

constexpr int32_t kLonger = 1920;
constexpr int32_t kShorter = 1080;

struct NoiseInt {
    const char* name;
    int32_t value;
};
constexpr NoiseInt kNoiseInts[] = {{"fractalType", 0}, {"noiseType", 2}};
struct NoiseFloat {
    const char* name;
    float value;
};
constexpr NoiseFloat kNoiseFloats[] = {
    {"contrast", 3.0F},     {"zoomWidth", 9.609F}, {"zoomHeight", 9.609F},  {"complexity", 5.0F},
    {"uBoundLeftX", 0.25F}, {"uBoundLeftY", 0.0F}, {"uBoundRightX", 0.75F}, {"uBoundRightY", 0.2F},
};

}  // namespace

NLEOpenGLBeamSineWaveEffect::NLEOpenGLBeamSineWaveEffect(std::shared_ptr<NLEFilterInfo> filterInfo)
    : NLEOpenGLFilter(std::move(filterInfo)),
      beam(stages.AddAs<NLEOpenGLBeamEffect>(kBeamSineWaveGuid)),
      resetFrame(cv::Mat::zeros(4, 4, CV_8UC4)) {}

int32_t NLEOpenGLBeamSineWaveEffect::InitEffect() {
    stages.InitEffects();
    return NLEOpenGLFilter::InitEffect();
}

int32_t NLEOpenGLBeamSineWaveEffect::Resize(int32_t newWidth, int32_t newHeight,
                                            int32_t newStride) {
    const bool wide = newWidth > newHeight;
    const int32_t beamWidth = wide ? kLonger : kShorter;
    stages.Resize(beamWidth, wide ? kShorter : kLonger, 4 * beamWidth);
    return NLEOpenGLFilter::Resize(newWidth, newHeight, newStride);
}

int32_t NLEOpenGLBeamSineWaveEffect::InitParams() {
    engine->AddInputTexture(width, height, stride, true);
    return kFilterOk;
}

int32_t NLEOpenGLBeamSineWaveEffect::Span() {
    const double minutes = 60.0 * IntOr("hour", 0) + IntOr("minute", 0);
    const double seconds = 60.0 * minutes + IntOr("second", 0);
    if (seconds <= 0.0) return std::max(duration, 1);
    const double frames = seconds * static_cast<double>(GetFrameRate());
    return static_cast<int32_t>(std::clamp(frames, 1.0, 1e9));
}

void NLEOpenGLBeamSineWaveEffect::DrawLine(const FrameRecord& first, int32_t frameWidth,
                                           int32_t frameHeight) {
    const float range = FloatOr("range", 1.0F);
    const float ends[4] = {-range, 0.0F, range, 0.0F};
    constexpr float kWhole[2] = {0.0F, 1.0F};
    const int32_t span = Span();
    beam->SetLineStartEnd(ends, 0);
    beam->SetLineProgressRange(kWhole, 0);
    beam->SetLineCount(1);
    beam->SetProgress(
        0.0F, std::clamp(static_cast<float>(position) / static_cast<float>(span), 0.0F, 1.0F));
    beam->SetPosition(position);
    beam->SetDuration(span);
    const bool wide = frameWidth > frameHeight;
    const int32_t beamWidth = wide ? kLonger : kShorter, beamHeight = wide ? kShorter : kLonger;
    FrameRecord inner = FrameRecord::TargetLess(beamWidth, beamHeight, 4 * beamWidth);
    beam->DoEffect({}, first, inner, beamWidth, beamHeight, 4 * beamWidth);
}

int32_t NLEOpenGLBeamSineWaveEffect::DoEffect(const FrameRecord& second, const FrameRecord& first,
                                              FrameRecord& out, int32_t frameWidth,
                                              int32_t frameHeight, int32_t frameStride) {
    if (!engine || !beam) return kFilterFailed;
    int32_t slot = 0;
    SetInputFrame(slot, first);
    SetInputFrame(slot, second);
    HandOverParams(params, *beam);
    DrawLine(first, frameWidth, frameHeight);
    if (position == 0) {
        engine->SetInputImage(slot++, resetFrame.data, resetFrame.cols, resetFrame.rows,
                              static_cast<int32_t>(resetFrame.step), 4, false, 0);
    } else {
        engine->SetInputTexture(slot++, beam->GetTargetFrame(0), frameWidth, frameHeight,
                                frameStride);
    }
    BindFirstMaterial(*engine, slot, textureFrames.get());
    UploadTimeAndLength(*engine, Time());
    UploadParams();
    return RenderTo(out);
}

NLEOpenGLCharmBeamEffect::NLEOpenGLCharmBeamEffect(std::shared_ptr<NLEFilterInfo> filterInfo)
    : NLEOpenGLFilter(std::move(filterInfo)), noise(stages.Add(kFractalNoiseGuid)) {}

int32_t NLEOpenGLCharmBeamEffect::InitEffect() {
    stages.InitEffects();
    return NLEOpenGLFilter::InitEffect();
}

int32_t NLEOpenGLCharmBeamEffect::Resize(int32_t newWidth, int32_t newHeight, int32_t newStride) {
    stages.Resize(WorkingSize::For(newWidth, newHeight));
    return NLEOpenGLFilter::Resize(newWidth, newHeight, newStride);
}

int32_t NLEOpenGLCharmBeamEffect::InitParams() {
    engine->AddUniformFloat("uViewSizeWidth", static_cast<float>(WorkingSize::Wide().width));
    engine->AddUniformFloat("uViewSizeHeight", static_cast<float>(WorkingSize::Wide().height));
    engine->AddUniformInt("calLayer", 0);
    engine->AddRenderTarget();
    engine->AddInputTexture(width, height, stride, true);
    return kFilterOk;
}

void NLEOpenGLCharmBeamEffect::SetNoise(int32_t frameWidth, int32_t frameHeight) {
    const auto set = [&](const char* name, float value) {
        noise->SetParam(name, kParamFloat, NLEParamValue::Float(value));
    };
    for (const auto& [name, value] : kNoiseInts) {
        noise->SetParam(name, kParamInt, NLEParamValue::Int(value));
    }
    for (const auto& [name, value] : kNoiseFloats) set(name, value);
    float evolution = 0.0F;
    if (FindFloat("evolution", evolution)) set("evolution", evolution);
    const WorkingSize size = WorkingSize::For(frameWidth, frameHeight);
    set("uViewSizeWidth", static_cast<float>(size.width));
    set("uViewSizeHeight", static_cast<float>(size.height));
}

int32_t NLEOpenGLCharmBeamEffect::DoEffect(const FrameRecord&, const FrameRecord& first,
                                           FrameRecord& out, int32_t frameWidth,
                                           int32_t frameHeight, int32_t frameStride) {
    if (!engine || !noise) return kFilterFailed;
    UploadParams();
    UploadGlobalTime(*engine, Time());
    SetNoise(frameWidth, frameHeight);
    const FrameRecord clouds =
        RunSubFilter(*noise, *this, {}, {}, frameWidth, frameHeight, frameStride);
    int32_t slot = 0;
    engine->SetUniformInt("calLayer", 1);
    engine->SetInputTexture(slot++, clouds, frameWidth, frameHeight, frameStride);
    BindFirstMaterial(*engine, slot, textureFrames.get());
    if (RenderPass() != kFilterOk) return kFilterFailed;
    engine->SetRenderTarget(0);
    engine->SetUniformInt("calLayer", 2);
    slot = 0;
    SetInputFrame(slot, first);
    engine->SetInputTexture(slot, GetTargetFrame(0), frameWidth, frameHeight, frameStride);
    return RenderTo(out);
}

}  // namespace kelmo
