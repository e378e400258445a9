// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/image/motion_blur.h"

#include <algorithm>

#include "framework/filter/effect_registry.h"
#include "framework/filter/filter_guids.h"

namespace kelmo {
namespace {

const bool kRegistered =
    RegisterEffect("NLEOpenGLMotionBlur", MakeEffect<NLEOpenGLMotionBlur>, {kMotionBlurGuid});

}  // namespace

NLEOpenGLMotionBlur::NLEOpenGLMotionBlur(std::shared_ptr<NLEFilterInfo> filterInfo)
    : NLEOpenGLFilter(std::move(filterInfo)) {}

int32_t NLEOpenGLMotionBlur::InitParams() {
    engine->AddRenderTarget();
    for (int32_t slot = 1; slot < kInputSlots; ++slot) {  // the base declares the first
        engine->AddRenderTarget();
        engine->AddInputTexture(0, 0, 0, true);
    }
    engine->AddUniformInt("history_frame_count", 1);
    return kFilterOk;
}

int32_t NLEOpenGLMotionBlur::DoEffect(const FrameRecord&, const FrameRecord&, FrameRecord& out,
                                      int32_t frameWidth, int32_t frameHeight,
                                      int32_t frameStride) {
    if (frameWidth < 1 || frameHeight < 1 || frameStride < 1) return kBadSize;
    if (!historyFrames) return kFilterOk;
    if (!engine) return kFilterFailed;
    int32_t slot = 0;
    for (const FrameRecord& frame : *historyFrames) {
        if (slot == kInputSlots) break;
        SetInputFrame(slot, frame);
    }
    const auto count = std::min<std::size_t>(historyFrames->size(), kMostFrames);
    engine->SetUniformInt("history_frame_count", static_cast<int32_t>(count));
    return RenderTo(out);
}

}  // namespace kelmo
