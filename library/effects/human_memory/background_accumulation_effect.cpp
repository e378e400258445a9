// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/human_memory/background_accumulation_effect.h"

#include <utility>

#include "framework/filter/effect_registry.h"
#include "framework/filter/filter_guids.h"
#include "framework/shared/picture_record.h"

namespace kelmo {
namespace {

const bool kRegistered = RegisterEffect("NLEOpenGLBackGroundAccumulationEffect",
                                        MakeEffect<NLEOpenGLBackGroundAccumulationEffect>,
                                        {kBackGroundAccumulationGuid});

enum Target : int32_t { kTrail, kMirroredTrail, kPresent, kTargets };

}  // namespace

NLEOpenGLBackGroundAccumulationEffect::NLEOpenGLBackGroundAccumulationEffect(
    std::shared_ptr<NLEFilterInfo> filterInfo)
    : NLEOpenGLFilter(std::move(filterInfo)), blankFrame(cv::Mat::zeros(4, 4, CV_8UC4)) {}

int32_t NLEOpenGLBackGroundAccumulationEffect::InitParams() {
    for (int32_t i = 0; i < kTargets; ++i) engine->AddRenderTarget();
    engine->AddUniformInt("uAccumBG", 1);
    engine->AddUniformInt("uAccum", 0);
    engine->AddUniformInt("uTicks", 1);
    color.Declare(*engine);
    return kFilterOk;
}

int32_t NLEOpenGLBackGroundAccumulationEffect::DrawPresent(const FrameRecord& second,
                                                           const FrameRecord& first,
                                                           int32_t frameWidth, int32_t frameHeight,
                                                           int32_t frameStride) {
    int32_t slot = 0;
    SetInputFrame(slot, first);
    SetInputFrame(slot, second);
    engine->SetUniformInt("uAccumBG", accumCount++);
    engine->SetRenderTarget(kPresent);
    engine->SetUniformInt("uAccum", 0);
    FrameRecord inside = FrameRecord::TargetLess(frameWidth, frameHeight, frameStride);
    if (RenderTo(inside) != kFilterOk) return kFilterFailed;
    engine->SetRenderTarget(kPresent);
    engine->SetUniformInt("uAccum", 1);
    engine->SetInputTexture(0, GetTargetFrame(kPresent), frameWidth, frameHeight, frameStride);
    return kFilterOk;
}

void NLEOpenGLBackGroundAccumulationEffect::BindHistory(int32_t target, int32_t frameWidth,
                                                        int32_t frameHeight, int32_t frameStride) {
    int32_t slot = 1;
    if (clock.Restarts(position)) {
        SetInputFrame(slot, PictureRecord(blankFrame));
        accumCount = 0;
    } else {
        engine->SetInputTexture(slot, GetTargetFrame(target), frameWidth, frameHeight, frameStride);
    }
}

int32_t NLEOpenGLBackGroundAccumulationEffect::DrawMirrored(FrameRecord& out, int32_t frameWidth,
                                                            int32_t frameHeight,
                                                            int32_t frameStride) {
    const float motion = FloatOr("motion_x", 0.0F);
    engine->SetUniformFloat("motion_x", -motion);
    BindHistory(kMirroredTrail, frameWidth, frameHeight, frameStride);
    if (RenderTo(out) != kFilterOk) return kFilterFailed;
    engine->SetRenderTarget(kMirroredTrail);
    engine->SetUniformFloat("motion_x", motion);
    return kFilterOk;
}

int32_t NLEOpenGLBackGroundAccumulationEffect::DoEffect(const FrameRecord& second,
                                                        const FrameRecord& first, FrameRecord& out,
                                                        int32_t frameWidth, int32_t frameHeight,
                                                        int32_t frameStride) {
    if (!engine) return kFilterFailed;
    position = MemoryClock::IndexOf(position, GetFrameRate());
    if (clock.Repeats(position)) return kFilterOk;
    UploadParams();
    engine->SetUniformInt("uTicks", clock.Elapsed(position));
    if (DrawPresent(second, first, frameWidth, frameHeight, frameStride) != kFilterOk) {
        return kFilterFailed;
    }
    int32_t rgb = 0;
    if (FindInt("color", rgb)) color.Set(*engine, rgb);
    if (IntOr("mirror", 0) == 1 &&
        DrawMirrored(out, frameWidth, frameHeight, frameStride) != kFilterOk) {
        return kFilterFailed;
    }
    BindHistory(kTrail, frameWidth, frameHeight, frameStride);
    if (RenderTo(out) != kFilterOk) return kFilterFailed;
    engine->SetRenderTarget(kTrail);
    clock.Keep(position);
    return kFilterOk;
}

}  // namespace kelmo
