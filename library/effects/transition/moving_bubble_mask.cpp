// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/transition/moving_bubble_mask.h"

#include "effects/transition/bubble_guids.h"
#include "framework/filter/effect_registry.h"
#include "framework/textures/material_binding.h"

namespace kelmo {
namespace {

const bool kRegistered =
    RegisterEffect("NLEOpenGLMovingBubbleMask", MakeEffect<NLEOpenGLMovingBubbleMask>,
                   {kBubbleMaskGuid, kFineBubbleMaskGuid});

}  // namespace

NLEOpenGLMovingBubbleMask::NLEOpenGLMovingBubbleMask(std::shared_ptr<NLEFilterInfo> filterInfo)
    : NLEOpenGLFilter(std::move(filterInfo)) {
    if (info->guid == kBubbleMaskGuid) swarm = MakeBubbles();
    if (info->guid == kFineBubbleMaskGuid) swarm = MakeFineBubbles();
}

int32_t NLEOpenGLMovingBubbleMask::DoEffect(const FrameRecord& second, const FrameRecord& first,
                                            FrameRecord& out, int32_t, int32_t, int32_t) {
    if (!engine) return kFilterFailed;
    UploadParams();
    engine->AddVertexAttribute("position", 4, swarm.positions.data(), false, false);
    engine->AddVertexAttribute("texcoord", 3, swarm.texcoords.data(), false, false);
    engine->AddVertexAttribute("attributes", 4, swarm.attributes.data(), false, false);
    engine->SetVertexCount(swarm.VertexCount());
    UploadGlobalTime(*engine, Time());
    int32_t slot = 0;
    SetInputFrame(slot, first);
    SetInputFrame(slot, second);
    BindFirstMaterial(*engine, slot, textureFrames.get());
    engine->SetBlendMode(kBlendAdd);
    engine->SetDrawType(kDrawTriangles);
    return RenderTo(out);
}

}  // namespace kelmo
