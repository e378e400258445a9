// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/scene/particles/particle_effect.h"

#include <utility>

#include "framework/filter/effect_registry.h"
#include "framework/filter/filter_guids.h"

namespace kelmo {
namespace {

const bool kRegistered =
    RegisterEffect("NLEOpenGLParticleEffect", MakeEffect<NLEOpenGLParticleEffect>, {kParticleGuid});

constexpr int32_t kUsualAmount = 5;

}  // namespace

NLEOpenGLParticleEffect::NLEOpenGLParticleEffect(std::shared_ptr<NLEFilterInfo> filterInfo)
    : NLEOpenGLFilter(std::move(filterInfo)) {
    needCpuFrame = 1;
}

int32_t NLEOpenGLParticleEffect::InitParams() {
    engine->AddRenderTarget();
    return kFilterOk;
}

int32_t NLEOpenGLParticleEffect::DoEffect(const FrameRecord&, const FrameRecord& first,
                                          FrameRecord& out, int32_t frameWidth, int32_t frameHeight,
                                          int32_t) {
    if (!engine) return kFilterFailed;
    cv::Mat picture;
    GetMat(picture, first);
    const bool changed =
        particles.Follow(picture, IntOr("uParticleAmount", kUsualAmount), frameWidth, frameHeight);
    engine->AddVertexAttribute("position", 2, particles.Positions(), !changed, false);
    engine->AddVertexAttribute("texcoord", 2, particles.Corners(), !changed, false);
    engine->AddVertexAttribute("color", 4, particles.Colors(), !changed, false);
    engine->SetVertexCount(particles.VertexCount());
    UploadTimeAndLength(*engine, Time());
    UploadParams();
    engine->SetBlendMode(kBlendOver);
    engine->SetDrawType(kDrawTriangles);
    if (RenderTo(out) != kFilterOk) return kFilterFailed;
    engine->SetRenderTarget(0);
    return kFilterOk;
}

}  // namespace kelmo
