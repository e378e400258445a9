// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/transition/two_box_transition.h"

#include <algorithm>

#include "framework/filter/effect_registry.h"
#include "framework/shared/easing.h"
#include "framework/textures/material_binding.h"

namespace kelmo {
namespace {

float Open(float s) {
    return BezierAt(0.0F, 0.65F, 0.64F, 1.0F, s);
}

float Close(float s) {
    return 1.0F - BezierAt(0.0F, 0.78F, 1.0F, 1.0F, s);
}

/// Opens, springs back a little, and opens again.
float OpenWithSpring(float s) {
    if (s < 0.8F) return 1.5625F * s * s;
    return 5.0F * (s - 0.9F) * (s - 0.9F) + 0.95F;
}

struct Variant {
    const char* guid;
    BoxSplit split;
    float (*curve)(float);
};

constexpr Variant kVariants[] = {
    {"7670F4D7-B202-4420-BBC5-1149491EB811", BoxSplit::kLeftRight, Open},
    {"EBC160A4-C522-4DEE-8FF2-24596EFF5CDA", BoxSplit::kLeftRight, Close},
    {"7CFE9C6C-03FE-45D2-92FD-0598CF965DE1", BoxSplit::kTopBottom, OpenWithSpring},
    {"1C7CC9AD-ACD1-4D08-9A39-82682F5BE775", BoxSplit::kTopBottom, Close},
};

const bool kRegistered =
    RegisterEffect("NLEOpenGL3DTwoBoxTransition", MakeEffect<NLEOpenGL3DTwoBoxTransition>,
                   {kVariants[0].guid, kVariants[1].guid, kVariants[2].guid, kVariants[3].guid});

}  // namespace

NLEOpenGL3DTwoBoxTransition::NLEOpenGL3DTwoBoxTransition(std::shared_ptr<NLEFilterInfo> filterInfo)
    : NLEOpenGLFilter(std::move(filterInfo)) {
    for (const Variant& variant : kVariants) {
        if (info->guid != variant.guid) continue;
        curve = variant.curve;
        splitMode = variant.split;
    }
}

int32_t NLEOpenGL3DTwoBoxTransition::InitParams() {
    engine->AddInstanceArrayVec4("uBoxRotateData", boxRotate.data(), kBoxes);
    engine->AddInstanceArrayVec4("uBoxMoveData", boxMove.data(), kBoxes);
    engine->AddInstanceArrayVec2("uTexMoveData", texMove.data(), kBoxes);
    engine->AddUniformMat4("uProj", projection.data());
    engine->AddUniformFloat("uProcessTime", 0.0F);
    return kFilterOk;
}

void NLEOpenGL3DTwoBoxTransition::Place(float value) {
    const float z = 1.0F - value - 3.412F;
    const float angle = 90.0F * value;
    if (splitMode == BoxSplit::kLeftRight) {
        boxRotate = {0.0F, angle, 0.0F, 1.0F, 0.0F, -angle, 0.0F, 1.0F};
        boxMove = {0.0F, 0.0F, z, 1.0F, 1.0F, 0.0F, z, 1.0F};
        texMove = {0.0F, 0.0F, 0.5F, 0.0F};
    } else {
        boxRotate = {angle, 0.0F, 0.0F, 1.0F, -angle, 0.0F, 0.0F, 1.0F};
        boxMove = {0.0F, 0.0F, z, 1.0F, 0.0F, -1.0F, z, 1.0F};
        texMove = {0.0F, 0.0F, 0.0F, -0.5F};
    }
}

int32_t NLEOpenGL3DTwoBoxTransition::DoEffect(const FrameRecord& second, const FrameRecord& first,
                                              FrameRecord& out, int32_t, int32_t, int32_t) {
    if (!engine) return kFilterFailed;
    const FrameTime time = Time();
    UploadParams();
    UploadGlobalTime(*engine, time);
    engine->SetUniformFloat("iFrame", static_cast<float>(position));
    int32_t slot = 0;
    SetInputFrame(slot, first);
    SetInputFrame(slot, second);

    if (curve) {
        const float value = curve(SmoothTime(std::min(time.Progress(), 1.0F)));
        engine->SetUniformFloat("uProcessTime", value);
        Place(value);
    }
    engine->SetInstanceArrayVec4("uBoxRotateData", boxRotate.data(), kBoxes);
    engine->SetInstanceArrayVec4("uBoxMoveData", boxMove.data(), kBoxes);
    engine->SetInstanceArrayVec2("uTexMoveData", texMove.data(), kBoxes);
    engine->SetInstanceCount(kBoxes);
    engine->SetUniformMat4("uProj", projection.data());
    BindFirstMaterial(*engine, slot, textureFrames.get());
    HandOverBoxMesh(*engine, HalfBoxMesh(splitMode));
    return RenderTo(out);
}

}  // namespace kelmo
