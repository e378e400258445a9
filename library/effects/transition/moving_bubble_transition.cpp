// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/transition/moving_bubble_transition.h"

#include "effects/transition/bubble_guids.h"
#include "framework/filter/effect_registry.h"
#include "framework/textures/material_binding.h"

namespace kelmo {
namespace {

const bool kRegistered =
    RegisterEffect("NLEOpenGLMovingBubbleTransition", MakeEffect<NLEOpenGLMovingBubbleTransition>,
                   {kBubbleTransitionGuid, kFineBubbleTransitionGuid});

}  // namespace

NLEOpenGLMovingBubbleTransition::NLEOpenGLMovingBubbleTransition(
    std::shared_ptr<NLEFilterInfo> filterInfo)
    : NLEOpenGLFilter(std::move(filterInfo)),
      mask(subFilters.Add(info->guid == kFineBubbleTransitionGuid ? kFineBubbleMaskGuid
                                                                  : kBubbleMaskGuid)) {}

int32_t NLEOpenGLMovingBubbleTransition::InitEffect() {
    subFilters.InitEffects();
    return NLEOpenGLFilter::InitEffect();
}

int32_t NLEOpenGLMovingBubbleTransition::DoEffect(const FrameRecord& second,
                                                  const FrameRecord& first, FrameRecord& out,
                                                  int32_t frameWidth, int32_t frameHeight,
                                                  int32_t frameStride) {
    if (!engine) return kFilterFailed;
    UploadParams();
    UploadGlobalTime(*engine, Time());
    int32_t slot = 0;
    SetInputFrame(slot, first);
    SetInputFrame(slot, second);
    if (mask) {
        mask->Resize(frameWidth, frameHeight, frameStride);
        mask->SetPosition(position);
        mask->SetDuration(duration);
        FrameRecord picture = FrameRecord::TargetLess(frameWidth, frameHeight, frameStride);
        mask->DoEffect(second, first, picture, frameWidth, frameHeight, frameStride);
        engine->SetInputTexture(slot++, mask->GetResultFrameAlt(), frameWidth, frameHeight,
                                frameStride);
    }
    BindFirstMaterial(*engine, slot, textureFrames.get());
    return RenderTo(out);
}

}  // namespace kelmo
