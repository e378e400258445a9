// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/beam/tracked/beam_merge_effect.h"

#include <utility>

#include "framework/filter/effect_registry.h"
#include "framework/filter/filter_guids.h"

namespace kelmo {
namespace {

const bool kRegistered = RegisterEffect(
    "NLEOpenGLBeamMergeEffect", MakeEffect<NLEOpenGLBeamMergeEffect>,
    {"BeamMerge", "674B7187-FC2C-E9EA-E024-5A2DCDA57AEA", "1ECD1D1D-A2A0-41A8-A1E0-90FC6102D36B",
     "AA59B779-E181-4969-8F9D-005512BA0496", "F96F3806-80A6-4641-92FF-9A53E65AD218"});

}  // namespace

NLEOpenGLBeamMergeEffect::NLEOpenGLBeamMergeEffect(std::shared_ptr<NLEFilterInfo> filterInfo)
    : NLEOpenGLFilter(std::move(filterInfo)), accum(stages.Add(kBeamAccumGuid)) {
    needCpuFrame = 1;
}

int32_t NLEOpenGLBeamMergeEffect::InitEffect() {
    stages.InitEffects();
    return NLEOpenGLFilter::InitEffect();
}

int32_t NLEOpenGLBeamMergeEffect::Resize(int32_t newWidth, int32_t newHeight, int32_t newStride) {
    stages.Resize(newWidth, newHeight, newStride);
    return NLEOpenGLFilter::Resize(newWidth, newHeight, newStride);
}

int32_t NLEOpenGLBeamMergeEffect::InitParams() {
    engine->AddUniformVec4("uColor", 1.0F, 1.0F, 0.6F, 1.0F);
    colorBytes.Declare(*engine);
    engine->AddInputTexture(width, height, stride, true);
    return kFilterOk;
}

int32_t NLEOpenGLBeamMergeEffect::DoEffect(const FrameRecord&, const FrameRecord& first,
                                           FrameRecord& out, int32_t frameWidth,
                                           int32_t frameHeight, int32_t frameStride) {
    if (!engine || !accum) return kFilterFailed;
    HandOverParams(params, *accum);
    UploadParams();
    UploadGlobalTime(*engine, Time());
    accum->SetPosition(position);
    accum->SetDuration(duration);
    FrameRecord inner = FrameRecord::TargetLess(frameWidth, frameHeight, frameStride);
    if (accum->DoEffect({}, first, inner, frameWidth, frameHeight, frameStride) != kFilterOk) {
        return kFilterFailed;
    }
    int32_t rgb = 0;
    if (FindInt("color", rgb)) colorBytes.Set(*engine, rgb);
    int32_t slot = 0;
    SetInputFrame(slot, first);
    engine->SetInputTexture(slot, accum->GetTargetFrame(0), frameWidth, frameHeight, frameStride);
    return RenderTo(out);
}

}  // namespace kelmo
