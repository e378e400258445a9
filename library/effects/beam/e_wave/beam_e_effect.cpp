// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/beam/e_wave/beam_e_effect.h"

#include <utility>

#include "framework/filter/effect_registry.h"
#include "framework/filter/filter_guids.h"

namespace kelmo {
namespace {

const bool kRegistered = RegisterEffect(
    "NLEOpenGLBeamEEffect", MakeEffect<NLEOpenGLBeamEEffect>,
    {"BeamE", "58A66025-F0E9-D5F5-CB3E-2363620AD304", "0D50D65B-509A-4601-AE4C-C53F139AF7C5",
     "15958E6F-FB65-4FEB-8CB6-7DA0E5F734B0", "3FA291A1-F462-46EA-8779-7C047ECB5D81"});

}  // namespace

NLEOpenGLBeamEEffect::NLEOpenGLBeamEEffect(std::shared_ptr<NLEFilterInfo> filterInfo)
    : BodyRingEffect(std::move(filterInfo)),
      beam(subFilters.AddAs<NLEOpenGLBeamEffect>(kBeamGuid)) {}

int32_t NLEOpenGLBeamEEffect::InitParams() {
    engine->AddInputTexture(width, height, stride, true);
    engine->AddUniformVec4("uBound", 0.0F, 0.0F, 1.0F, 1.0F);
    engine->AddUniformFloat("uViewSizeWidth", static_cast<float>(WorkingSize::Wide().width));
    engine->AddUniformFloat("uViewSizeHeight", static_cast<float>(WorkingSize::Wide().height));
    colorBytes.Declare(*engine);
    return kFilterOk;
}

int32_t NLEOpenGLBeamEEffect::InitEffect() {
    subFilters.InitEffects();
    return BodyRingEffect::InitEffect();
}

int32_t NLEOpenGLBeamEEffect::Resize(int32_t newWidth, int32_t newHeight, int32_t newStride) {
    subFilters.Resize(WorkingSize::For(newWidth, newHeight));
    return BodyRingEffect::Resize(newWidth, newHeight, newStride);
}

int32_t NLEOpenGLBeamEEffect::DoEffect(const FrameRecord& second, const FrameRecord& first,
                                       FrameRecord& out, int32_t frameWidth, int32_t frameHeight,
                                       int32_t) {
    if (!engine || !beam) return kFilterFailed;
    beam->SetProgress(0.0F, 1.0F);
    HandOverParams(params, *beam);
    UploadParams();
    UploadGlobalTime(*engine, Time());
    const WorkingSize size = WorkingSize::For(frameWidth, frameHeight);
    if (!FindBodies(first, size)) return kFilterFailed;
    const float rest = 1.0F - Cycle();
    const cv::Rect box = MakeRings(*beam, false, size, [rest](const cv::Rect& body) {
        const float fifth = static_cast<float>(body.width) / 5.0F;
        const float top =
            static_cast<float>(body.height) * rest + static_cast<float>(body.y) - fifth;
        return Band{static_cast<int32_t>(top), static_cast<int32_t>(fifth)};
    });
    int32_t radius = 0;
    if (FindInt("uEclosion", radius)) boundMargin = radius / 2 + 1;
    const cv::Vec4f bound = Bound(box, static_cast<float>(boundMargin), size);
    engine->SetUniformVec4("uBound", bound[0], bound[1], bound[2], bound[3]);
    int32_t slot = 0;
    SetInputFrame(slot, first);
    RunSubFilter(*beam, *this, second, first, size);
    BindStageResult(*engine, slot, beam->GetTargetFrame(0), size);
    SendColor();
    engine->SetUniformFloat("uViewSizeWidth", static_cast<float>(size.width));
    engine->SetUniformFloat("uViewSizeHeight", static_cast<float>(size.height));
    return RenderTo(out);
}

}  // namespace kelmo
