// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/text/letters/show_char_with_roi_effect.h"

#include <utility>

#include "framework/filter/effect_registry.h"
#include "framework/filter/text_param.h"
#include "framework/shared/easing.h"
#include "framework/textures/material_binding.h"

namespace kelmo {
namespace {

const bool kRegistered =
    RegisterEffect("NLEOpenGLShowCharWithROIEffect", MakeEffect<NLEOpenGLShowCharWithROIEffect>,
                   {"3229721F-049E-489E-A4A4-7F100EFFE52F"});

}  // namespace

NLEOpenGLShowCharWithROIEffect::NLEOpenGLShowCharWithROIEffect(
    std::shared_ptr<NLEFilterInfo> filterInfo)
    : NLEOpenGLFilter(std::move(filterInfo)) {
    needCpuFrame = 1;
}

int32_t NLEOpenGLShowCharWithROIEffect::InitParams() {
    engine->AddUniformFloat("dt", 0.0F);

    return kFilterOk;
}

int32_t NLEOpenGLShowCharWithROIEffect::DoEffect(const FrameRecord&, const FrameRecord& first,
                                                 FrameRecord& out, int32_t frameWidth,
                                                 int32_t frameHeight, int32_t) {
    if (!engine || frameWidth < 1 || frameHeight < 1) return kFilterFailed;
    UploadParams();
    TakeTextParam(*this, [this](TextPath& text) {
        letters.Take(text, {engine->GetWidth(), engine->GetHeight()});
    });
    cv::Mat picture;
    GetMat(picture, first);
    letters.Bind(*engine, false);
    UploadGlobalTime(*engine, Time());
    engine->SetBlendMode(kBlendOver);
    engine->SetDrawType(kDrawTriangles);
    const float r = Time().Progress();
    const float p = r <= 0.5F ? 2.0F * r : 1.0F - 2.0F * (r - 0.5F);
    const float dt = r > 1.0F ? 1.0F : 1.0F - BezierAt(0.0F, 0.0F, 0.0F, 1.0F, p);
    engine->SetUniformFloat("dt", dt);
    ScalePicture(picture, {frameWidth, frameHeight}, ClearnessLevel(dt), scaled);
    BindImageFrame(*engine, 0, scaled);
    int32_t slot = 1;
    BindFirstMaterial(*engine, slot, textureFrames.get());
    return RenderTo(out);
}

}  // namespace kelmo
