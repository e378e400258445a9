// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/image/smart_denoise.h"

#include <algorithm>

#include "framework/filter/effect_registry.h"
#include "framework/textures/material_binding.h"
#include "platform/host_access.h"

namespace kelmo {
namespace {

const bool kRegistered = RegisterEffect("NLEOpenGLSmartDeNoise", MakeEffect<NLEOpenGLSmartDeNoise>,
                                        {"CFE92EDA-8603-4C12-B8DC-39F2C508375C"});

}  // namespace

NLEOpenGLSmartDeNoise::NLEOpenGLSmartDeNoise(std::shared_ptr<NLEFilterInfo> filterInfo)
    : NLEOpenGLFilter(std::move(filterInfo)) {}

int32_t NLEOpenGLSmartDeNoise::InitParams() {
    engine->AddRenderTarget();
    engine->AddUniformInt("internalType", 0);
    return kFilterOk;
}

int32_t NLEOpenGLSmartDeNoise::RenderWith(FrameRecord& target, int32_t rowBytes) {
    if (engine->Render(target, engine, rowBytes) == 0) return kFilterOk;
    LogError("kelmo:DoEffect Failed: %s", info->name.c_str());
    return kFilterFailed;
}

int32_t NLEOpenGLSmartDeNoise::DoEffect(const FrameRecord& second, const FrameRecord& first,
                                        FrameRecord& out, int32_t frameWidth, int32_t frameHeight,
                                        int32_t frameStride) {
    if (!engine) return kFilterFailed;
    int32_t slot = 0;
    SetInputFrame(slot, first);
    SetInputFrame(slot, second);
    BindAllMaterialAsImages(*engine, slot, textureFrames.get());
    UploadTime(*engine, Time());
    UploadParams();

    // Written whole by the pass: `create` keeps its memory from frame to frame.
    scratch.create(std::max(first.height, 1), std::max(first.width, 1), CV_8UC4);
    const auto step = static_cast<int32_t>(scratch.step[0]);
    FrameRecord smooth = FrameRecord::TargetLess(scratch.cols, scratch.rows, step);
    smooth.pixels = scratch.data;
    engine->SetUniformInt("internalType", 0);
    if (RenderWith(smooth, frameWidth * 4) != kFilterOk) return kFilterFailed;

    engine->SetRenderTarget(0);
    int32_t again = 0;
    SetInputFrame(again, first);
    engine->SetInputTexture(slot, GetTargetFrame(0), frameWidth, frameHeight, frameStride);
    UploadParams();
    engine->SetUniformInt("internalType", 1);
    return RenderWith(out, frameStride);
}

}  // namespace kelmo
