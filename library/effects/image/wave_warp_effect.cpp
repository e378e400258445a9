// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/image/wave_warp_effect.h"

#include "framework/filter/effect_registry.h"

namespace kelmo {
namespace {

const bool kRegistered =
    RegisterEffect("NLEOpenGLWaveWarpEffect", MakeEffect<NLEOpenGLWaveWarpEffect>,
                   {"08E29D96-81B7-423C-868B-677217856FA9"});

}  // namespace

NLEOpenGLWaveWarpEffect::NLEOpenGLWaveWarpEffect(std::shared_ptr<NLEFilterInfo> filterInfo)
    : NLEOpenGLFilter(std::move(filterInfo)) {}

int32_t NLEOpenGLWaveWarpEffect::InitParams() {
    engine->AddUniformInt("calLayer", 0);
    engine->AddRenderTarget();
    return kFilterOk;
}

int32_t NLEOpenGLWaveWarpEffect::DoEffect(const FrameRecord&, const FrameRecord& first,
                                          FrameRecord& out, int32_t frameWidth, int32_t frameHeight,
                                          int32_t frameStride) {
    if (!engine) return kFilterFailed;
    UploadParams();
    UploadGlobalTime(*engine, Time());
    engine->SetUniformInt("calLayer", 1);
    int32_t slot = 0;
    SetInputFrame(slot, first);
    FrameRecord pass = FrameRecord::TargetLess(frameWidth, frameHeight, frameStride);
    if (RenderTo(pass) != kFilterOk) return kFilterFailed;
    engine->SetRenderTarget(0);
    engine->SetUniformInt("calLayer", 2);
    engine->SetInputTexture(0, GetTargetFrame(0), frameWidth, frameHeight, frameStride);
    return RenderTo(out);
}

}  // namespace kelmo
