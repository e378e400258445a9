// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/image/fractal_noise_effect.h"

#include "framework/filter/effect_registry.h"
#include "framework/filter/filter_guids.h"

namespace kelmo {
namespace {

const bool kRegistered = RegisterEffect(
    "NLEOpenGLFractalNoiseEffect", MakeEffect<NLEOpenGLFractalNoiseEffect>, {kFractalNoiseGuid});

}  // namespace

NLEOpenGLFractalNoiseEffect::NLEOpenGLFractalNoiseEffect(std::shared_ptr<NLEFilterInfo> filterInfo)
    : NLEOpenGLFilter(std::move(filterInfo)) {}

int32_t NLEOpenGLFractalNoiseEffect::InitParams() {
    engine->AddRenderTarget();
    return kFilterOk;
}

int32_t NLEOpenGLFractalNoiseEffect::DoEffect(const FrameRecord&, const FrameRecord&,
                                              FrameRecord& out, int32_t, int32_t, int32_t) {
    if (!engine) return kFilterFailed;
    UploadParams();
    engine->SetUniformFloat("global_time", Time().position);
    return RenderTo(out);
}

}  // namespace kelmo
