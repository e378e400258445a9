// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/transition/wave_fill.h"

#include "effects/transition/clip_measure.h"
#include "framework/filter/effect_registry.h"
#include "framework/textures/material_binding.h"

namespace kelmo {
namespace {

const bool kRegistered = RegisterEffect(
    "NLEOpenGLWaveFill", MakeEffect<NLEOpenGLWaveFill>,
    {"1B2C80A3-80A6-42A5-9642-3D67939F0664", "7DD640A1-44C0-4F8F-9129-24DB9BE20B20"});

}  // namespace

NLEOpenGLWaveFill::NLEOpenGLWaveFill(std::shared_ptr<NLEFilterInfo> filterInfo)
    : NLEOpenGLFilter(std::move(filterInfo)) {
    needCpuFrame = 1;
}

int32_t NLEOpenGLWaveFill::InitParams() {
    engine->AddUniformVec4("orig_roi", roi.x, roi.y, roi.width, roi.height);
    return kFilterOk;
}

int32_t NLEOpenGLWaveFill::DoEffect(const FrameRecord& second, const FrameRecord& first,
                                    FrameRecord& out, int32_t, int32_t, int32_t) {
    if (!engine) return kFilterFailed;
    cv::Mat picture;
    GetMat(picture, first);
    roi = MeasureContent(picture, gray);
    engine->SetUniformVec4("orig_roi", roi.x, roi.y, roi.width, roi.height);
    int32_t slot = 0;
    SetInputFrame(slot, first);
    SetInputFrame(slot, second);
    BindAllMaterialAsImages(*engine, slot, textureFrames.get());
    UploadTimeAndLength(*engine, Time());
    UploadParams();
    return RenderTo(out);
}

}  // namespace kelmo
