// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/scene/particles/particle_emit_effect.h"

#include <utility>

#include "framework/filter/effect_registry.h"
#include "framework/filter/filter_guids.h"
#include "framework/textures/material_binding.h"

namespace kelmo {
namespace {

const bool kRegistered =
    RegisterEffect("NLEOpenGLParticleEmitEffect", MakeEffect<NLEOpenGLParticleEmitEffect>,
                   {"ParticleEmit", kParticleEmitGuid});
const bool kNoMaskRegistered = RegisterEffect(
    "NLEOpenGLParticleEmitNoMaskEffect", MakeEffect<NLEOpenGLParticleEmitNoMaskEffect>,
    {"ParticleEmitNoMask", "B2D59104-725A-49DA-874A-0571482CC446"});

}  // namespace

NLEOpenGLParticleEmitEffect::NLEOpenGLParticleEmitEffect(std::shared_ptr<NLEFilterInfo> filterInfo)
    : NLEOpenGLFilter(std::move(filterInfo)) {
    needCpuFrame = 1;
}

void NLEOpenGLParticleEmitEffect::BuildEmitBuffers(const FrameRecord& frame, int32_t count) {
    cv::Mat mask;
    GetMat(mask, frame);
    if (mask.type() != CV_8UC4) mask.release();
    particles.BuildOver(mask, count);
}

int32_t NLEOpenGLParticleEmitEffect::DoEffect(const FrameRecord&, const FrameRecord& first,
                                              FrameRecord& out, int32_t, int32_t, int32_t) {
    if (!engine) return kFilterFailed;
    const int32_t wanted = EmittedParticles::Within(IntOr("uCount", 0));
    const bool follows = IntOr("TextIsUpdate", 0) != 0;
    if (wanted != particles.Count() || follows) BuildEmitBuffers(first, wanted);
    engine->AddVertexAttribute("position", 4, particles.Positions(), true, false);
    engine->AddVertexAttribute("direction", 4, particles.Directions(), true, false);
    engine->AddVertexAttribute("texcoord", 3, particles.Corners(), true, false);
    engine->SetVertexCount(particles.VertexCount());
    UploadParams();
    UploadGlobalTime(*engine, Time());
    int32_t slot = 0;
    SetInputFrame(slot, first);
    BindFirstMaterial(*engine, slot, textureFrames.get());
    engine->SetBlendMode(kBlendOver);
    engine->SetDrawType(kDrawTriangles);
    return RenderTo(out);
}

NLEOpenGLParticleEmitNoMaskEffect::NLEOpenGLParticleEmitNoMaskEffect(
    std::shared_ptr<NLEFilterInfo> filterInfo)
    : NLEOpenGLFilter(std::move(filterInfo)) {}

int32_t NLEOpenGLParticleEmitNoMaskEffect::DoEffect(const FrameRecord&, const FrameRecord& first,
                                                    FrameRecord& out, int32_t, int32_t, int32_t) {
    if (!engine) return kFilterFailed;
    const int32_t wanted = EmittedParticles::Within(IntOr("uCount", 0) + int64_t{1});
    if (wanted != particles.Count()) particles.Build(wanted);
    engine->AddVertexAttribute("position", 4, particles.Positions(), true, false);
    engine->AddVertexAttribute("texcoord", 3, particles.Corners(), true, false);
    engine->SetVertexCount(particles.VertexCount());
    UploadParams();
    UploadGlobalTime(*engine, Time());
    int32_t slot = 0;
    SetInputFrame(slot, first);
    BindFirstMaterial(*engine, slot, textureFrames.get());
    engine->SetBlendMode(kBlendOver);
    engine->SetDrawType(kDrawTriangles);
    return RenderTo(out);
}

}  // namespace kelmo
