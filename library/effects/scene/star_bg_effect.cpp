// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/scene/star_bg_effect.h"

#include <utility>

#include "framework/filter/effect_registry.h"
#include "framework/textures/material_binding.h"

namespace kelmo {
namespace {

const bool kRegistered =
    RegisterEffect("NLEOpenGLStarBGEffect", MakeEffect<NLEOpenGLStarBGEffect>, {"StarBG"});

}  // namespace

NLEOpenGLStarBGEffect::NLEOpenGLStarBGEffect(std::shared_ptr<NLEFilterInfo> filterInfo)
    : NLEOpenGLCombineFilter(std::move(filterInfo)) {
    needCpuFrame = 1;
}

int32_t NLEOpenGLStarBGEffect::InitParams() {
    engine->AddInputTexture(width, height, stride, true);
    return kFilterOk;
}

int32_t NLEOpenGLStarBGEffect::DoEffect(const FrameRecord&, const FrameRecord& first,
                                        FrameRecord& out, int32_t, int32_t, int32_t) {
    if (!engine) return kFilterFailed;
    FrameRecord mask;
    if (!GetHumanMask(mask, segmentation.Get(), maskMat, first, false, false, nullptr, false, 4)) {
        return kFilterFailed;
    }
    int32_t slot = 0;
    SetInputFrame(slot, first);
    SetInputFrame(slot, mask);
    const FrameTime time = Time();
    BindMaterialAtTime(*engine, slot, textureFrames.get(), texDescs.get(), time.position, 1);
    UploadTimeAndLength(*engine, time);
    UploadParams();
    return RenderTo(out);
}

}  // namespace kelmo
