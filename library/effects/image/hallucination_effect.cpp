// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/image/hallucination_effect.h"

#include <algorithm>

#include "framework/filter/effect_registry.h"
#include "framework/textures/material_binding.h"
#include "framework/textures/texture_frames.h"

namespace kelmo {
namespace {

const bool kRegistered =
    RegisterEffect("NLEOpenGLHallucinationEffect", MakeEffect<NLEOpenGLHallucinationEffect>,
                   {"EBD7747C-195D-4C5C-A261-847CDF0A4BE0"});

constexpr std::size_t kColourTexture = 1;

}  // namespace

NLEOpenGLHallucinationEffect::NLEOpenGLHallucinationEffect(
    std::shared_ptr<NLEFilterInfo> filterInfo)
    : NLEOpenGLFilter(std::move(filterInfo)), blankFrame(cv::Mat::zeros(4, 4, CV_8UC4)) {}

int32_t NLEOpenGLHallucinationEffect::InitParams() {
    engine->AddRenderTarget();
    engine->AddUniformInt("isLastFrameAddLut", 0);
    kept.Restart();
    return kFilterOk;
}

int32_t NLEOpenGLHallucinationEffect::Step(float framesPerSecond) {
    float speed = 0.0F;
    if (!FindFloat("speed", speed)) return 1;
    const auto ticks = static_cast<float>(6.0 - (speed * 0.8 + 0.1) * 5.0);
    return std::max(1, static_cast<int32_t>(framesPerSecond / 25.0 * ticks));
}

void NLEOpenGLHallucinationEffect::BindHistory(int32_t& slot, float framesPerSecond,
                                               int32_t frameWidth, int32_t frameHeight,
                                               int32_t frameStride) {
    if (kept.Usable(position, framesPerSecond)) {
        engine->SetInputTexture(slot++, GetTargetFrame(0), frameWidth, frameHeight, frameStride);
        return;
    }
    kept.Forget();
    engine->SetUniformInt("isLastFrameAddLut", 1);
    engine->SetInputImage(slot++, blankFrame.data, blankFrame.cols, blankFrame.rows,
                          static_cast<int32_t>(blankFrame.step[0]), 4, false, 0);
}

int32_t NLEOpenGLHallucinationEffect::DoEffect(const FrameRecord& second, const FrameRecord& first,
                                               FrameRecord& out, int32_t frameWidth,
                                               int32_t frameHeight, int32_t frameStride) {
    if (!engine) return kFilterFailed;
    engine->SetUniformInt("isLastFrameAddLut", 0);
    UploadParams();
    // No time uniform of the base reaches this shader by itself; the colours move with it.
    UploadGlobalTime(*engine, Time());
    const float framesPerSecond = GetFrameRate();
    const int32_t step = Step(framesPerSecond);
    float filter = 0.0F;
    if (FindFloat("filter", filter)) engine->SetUniformFloat("filter", filter);
    int32_t slot = 0;
    SetInputFrame(slot, first);
    SetInputFrame(slot, second);
    BindHistory(slot, framesPerSecond, frameWidth, frameHeight, frameStride);
    if (textureFrames && textureFrames->SlotCount() > kColourTexture) {
        BindImageFrame(*engine, slot++, textureFrames->Frame(kColourTexture, 0));
    }
    if (RenderTo(out) != kFilterOk) return kFilterFailed;
    const bool renew = position % step == 0;
    if (renew) engine->SetRenderTarget(0);
    kept.Drawn(position, renew);
    return kFilterOk;
}

}  // namespace kelmo
