// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/beam/lines/beam_effect.h"

#include <algorithm>
#include <utility>

#include "framework/filter/effect_registry.h"
#include "framework/filter/filter_guids.h"
#include "framework/textures/material_binding.h"

namespace kelmo {
namespace {

const bool kRegistered =
    RegisterEffect("NLEOpenGLBeamEffect", MakeEffect<NLEOpenGLBeamEffect>,
                   {"Beam", kBeamGuid, kBeamWaveGuid, "00548362-3BED-739D-B780-CE3AA818DC47",
                    kBeamParticleDissipateGuid, kBeamParticleConvergeGuid, kBeamSineWaveGuid});

constexpr std::array<float, 32> kNoTransform = {
    1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1,  //
    1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1,
};

}  // namespace

NLEOpenGLBeamEffect::NLEOpenGLBeamEffect(std::shared_ptr<NLEFilterInfo> filterInfo)
    : NLEOpenGLFilter(std::move(filterInfo)), mvp(kNoTransform) {}

int32_t NLEOpenGLBeamEffect::InitParams() {
    engine->AddRenderTarget();
    engine->AddUniformArrayVec4("uStartEndData", table.StartEnd(), table.Capacity());
    engine->AddUniformArrayVec4("uControlData", table.Control(), table.Capacity());
    engine->AddUniformFloat("uProgress", 0.0F);
    engine->AddUniformFloat("uProgressEnd", 1.0F);
    engine->AddUniformArrayVec2("uProgressRange", table.ProgressRange(), table.Capacity());
    engine->AddUniformFloat("uAlpha", 1.0F);
    engine->AddUniformArrayVec4("uColor", table.Color(), table.Capacity());
    engine->AddUniformFloat("uTime", 0.0F);
    engine->AddUniformFloat("uViewSizeWidth", 548.0F);
    engine->AddUniformFloat("uViewSizeHeight", 308.0F);
    colorBytes.Declare(*engine);
    engine->AddUniformMat4("uMVP", mvp.data());
    return kFilterOk;
}

int32_t NLEOpenGLBeamEffect::InitEffect() {
    mesh.Build(requestedMeshLines);
    return NLEOpenGLFilter::InitEffect();
}

void NLEOpenGLBeamEffect::SetLine(const CurveLine& line, int32_t index) {
    const float ends[4] = {line.start.x, line.start.y, line.end.x, line.end.y};
    const float controls[4] = {line.control1.x, line.control1.y, line.control2.x, line.control2.y};
    const float range[2] = {line.startProgress, line.endProgress};
    constexpr float kWhite[4] = {1.0F, 1.0F, 1.0F, 1.0F};
    SetLineStartEnd(ends, index);
    SetLineControl(controls, index);
    SetLineProgressRange(range, index);
    SetLineColor(kWhite, index);
}

void NLEOpenGLBeamEffect::SetProgress(float start, float end) {
    progressStart = start;
    progressEnd = end;
    explicitProgress = true;
}

void NLEOpenGLBeamEffect::SetMvp(const float values[32]) {
    std::copy_n(values, mvp.size(), mvp.begin());
}

void NLEOpenGLBeamEffect::GiveMesh(int32_t steps) {
    engine->AddVertexAttribute("position", 2, mesh.Positions().data(), true, false);
    engine->AddVertexAttribute("texcoord", mesh.CornerComponents(), mesh.Corners().data(), true,
                               false);
    engine->SetVertexCount(mesh.VertexCount(steps));
}

void NLEOpenGLBeamEffect::TakeParams() {
    requestedMeshLines = IntOr("uLineCount", requestedMeshLines);
    mesh.Build(requestedMeshLines);
    int32_t steps = 0;
    if (FindInt("uPointCount", steps)) GiveMesh(steps);
    UploadParams();
    int32_t color = 0;
    if (FindInt("color", color)) colorBytes.Set(*engine, color);
}

void NLEOpenGLBeamEffect::SendProgress() {
    float start = progressStart;
    float end = progressEnd;
    if (!std::exchange(explicitProgress, false)) {
        const float part = Time().Progress();
        start = part < 0.5F ? 0.0F : 2.0F * (part - 0.5F);
        end = part < 0.5F ? 2.0F * part : 1.0F;
    }
    engine->SetUniformFloat("uProgress", start);
    engine->SetUniformFloat("uProgressEnd", end);
}

int32_t NLEOpenGLBeamEffect::DoEffect(const FrameRecord&, const FrameRecord&, FrameRecord& out,
                                      int32_t frameWidth, int32_t frameHeight, int32_t) {
    if (!engine) return kFilterFailed;
    TakeParams();
    UploadGlobalTime(*engine, Time());
    engine->SetUniformFloat("uViewSizeWidth", static_cast<float>(frameWidth));
    engine->SetUniformFloat("uViewSizeHeight", static_cast<float>(frameHeight));
    const int32_t lines = table.Count();
    engine->SetUniformArrayVec4("uStartEndData", table.StartEnd(), lines);
    engine->SetUniformArrayVec4("uControlData", table.Control(), lines);
    SendProgress();
    engine->SetUniformArrayVec2("uProgressRange", table.ProgressRange(), lines);
    engine->SetUniformArrayVec4("uColor", table.Color(), lines);
    engine->SetUniformFloat("uAlpha", 1.0F);
    engine->SetUniformFloat("uTime", Time().Tick());
    engine->SetUniformMat4("uMVP", mvp.data());
    engine->SetInstanceCount(lines);
    int32_t slot = 0;
    BindFirstMaterial(*engine, slot, textureFrames.get());
    engine->SetBlendMode(kBlendOver);
    engine->SetDrawType(kDrawTriangles);
    if (RenderTo(out) != kFilterOk) return kFilterFailed;
    engine->SetRenderTarget(0);
    return kFilterOk;
}

}  // namespace kelmo
