// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/beam/beam_eclosion_effect.h"

#include "framework/filter/effect_registry.h"
#include "framework/filter/filter_guids.h"

namespace kelmo {
namespace {

const bool kRegistered = RegisterEffect(
    "NLEOpenGLBeamEclosionEffect", MakeEffect<NLEOpenGLBeamEclosionEffect>, {kBeamEclosionGuid});

}  // namespace

NLEOpenGLBeamEclosionEffect::NLEOpenGLBeamEclosionEffect(std::shared_ptr<NLEFilterInfo> filterInfo)
    : NLEOpenGLFilter(std::move(filterInfo)) {}

int32_t NLEOpenGLBeamEclosionEffect::InitParams() {
    // The kept first pass needs a picture to be exchanged with.
    engine->AddRenderTarget();
    engine->AddUniformInt("uHorizontal", 1);
    engine->AddUniformInt("uChangeColor", 0);
    engine->AddUniformInt("color_r", 0);
    engine->AddUniformInt("color_g", 0);
    engine->AddUniformInt("color_b", 0);
    return kFilterOk;
}

int32_t NLEOpenGLBeamEclosionEffect::DoEffect(const FrameRecord& second, const FrameRecord& first,
                                              FrameRecord& out, int32_t frameWidth,
                                              int32_t frameHeight, int32_t frameStride) {
    if (!engine) return kFilterFailed;
    UploadParams();
    engine->SetUniformInt("uHorizontal", 0);
    int32_t slot = 0;
    if (inputOverride.InForce()) {
        engine->SetInputTexture(slot++, inputOverride.Record(frameWidth, frameHeight, frameStride),
                                frameWidth, frameHeight, frameStride);
    } else {
        SetInputFrame(slot, first);
    }
    SetInputFrame(slot, second);
    if (RenderTo(out) != kFilterOk) return kFilterFailed;
    engine->SetRenderTarget(0);
    engine->SetUniformInt("uHorizontal", 1);
    engine->SetInputTexture(0, GetTargetFrame(0), frameWidth, frameHeight, frameStride);
    return RenderTo(out);
}

}  // namespace kelmo
