// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/image/confused_effect.h"

#include <algorithm>

#include "framework/filter/effect_registry.h"

namespace kelmo {
namespace {

const bool kRegistered =
    RegisterEffect("NLEOpenGLConfusedEffect", MakeEffect<NLEOpenGLConfusedEffect>,
                   {"D3A34D29-2B9B-4DA2-AF97-CE227A5270B3"});

}  // namespace

NLEOpenGLConfusedEffect::NLEOpenGLConfusedEffect(std::shared_ptr<NLEFilterInfo> filterInfo)
    : NLEOpenGLFilter(std::move(filterInfo)) {}

int32_t NLEOpenGLConfusedEffect::InitParams() {
    engine->AddRenderTarget();
    kept.Restart();
    return kFilterOk;
}

int32_t NLEOpenGLConfusedEffect::DoEffect(const FrameRecord& second, const FrameRecord& first,
                                          FrameRecord& out, int32_t frameWidth, int32_t frameHeight,
                                          int32_t frameStride) {
    if (!engine) return kFilterFailed;
    const float framesPerSecond = GetFrameRate();
    const float pace = params.empty() ? 0.0F : CurrentNumber(*params.front());
    const auto speed = static_cast<float>(pace * 0.5 + 0.5);
    // A pace of 0 or less renews as seldom as an int can say.
    const float frames = speed > 0.0F ? framesPerSecond / speed : 1.0e9F;
    const int32_t step = std::max(1, static_cast<int32_t>(std::min(frames, 1.0e9F)));
    const bool renew = position % step == 0;
    int32_t slot = 0;
    SetInputFrame(slot, first);
    SetInputFrame(slot, second);
    if (!renew && kept.Usable(position, framesPerSecond)) {
        engine->SetInputTexture(slot, GetTargetFrame(0), frameWidth, frameHeight, frameStride);
    } else {
        kept.Forget();
        SetInputFrame(slot, first);
    }
    engine->SetUniformFloat("global_time", SecondsAt(position, framesPerSecond));
    engine->SetUniformFloat("speed", speed);
    engine->SetUniformFloat("amount", FloatOr("amount", 1.0F));
    engine->SetUniformFloat("frame_rate", framesPerSecond);
    if (RenderTo(out) != kFilterOk) return kFilterFailed;
    if (renew) engine->SetRenderTarget(0);
    kept.Drawn(position, renew);
    return kFilterOk;
}

}  // namespace kelmo
