// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/text/letters/char_scale.h"

#include <utility>

#include "framework/filter/effect_registry.h"
#include "framework/filter/text_param.h"
#include "framework/textures/material_binding.h"

namespace kelmo {
namespace {

const bool kRegistered = RegisterEffect("NLEOpenGLCharScale", MakeEffect<NLEOpenGLCharScale>,
                                        {"26A97A4E-20A4-45F4-95BC-ECDE3F4A336E"});

}  // namespace

NLEOpenGLCharScale::NLEOpenGLCharScale(std::shared_ptr<NLEFilterInfo> filterInfo)
    : NLEOpenGLFilter(std::move(filterInfo)) {
    needCpuFrame = 1;
}

int32_t NLEOpenGLCharScale::InitParams() {
    engine->AddUniformFloat("dt", 0.0F);
    engine->AddUniformVec2("iInputSize", 0.0F, 0.0F);
    return kFilterOk;
}

int32_t NLEOpenGLCharScale::DoEffect(const FrameRecord&, const FrameRecord& first, FrameRecord& out,
                                     int32_t frameWidth, int32_t frameHeight, int32_t) {
    if (!engine || frameWidth < 1 || frameHeight < 1) return kFilterFailed;
    UploadParams();
    TakeTextParam(*this, [this](TextPath& text) {
        letters.Take(text, {engine->GetWidth(), engine->GetHeight()});
    });
    cv::Mat picture;
    GetMat(picture, first);
    letters.Bind(*engine, true);
    UploadGlobalTime(*engine, Time());
    engine->SetBlendMode(kBlendOver);
    engine->SetDrawType(kDrawTriangles);
    engine->SetUniformVec2("iInputSize", static_cast<float>(frameWidth),
                           static_cast<float>(frameHeight));
    BindImageFrame(*engine, 0, picture);
    int32_t slot = 1;
    BindFirstMaterial(*engine, slot, textureFrames.get());
    return RenderTo(out);
}

}  // namespace kelmo
