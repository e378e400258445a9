// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/transition/box_transition.h"

#include <algorithm>
#include <cmath>

#include "effects/transition/box_mesh.h"
#include "framework/filter/effect_registry.h"
#include "framework/shared/easing.h"
#include "framework/textures/material_binding.h"

namespace kelmo {
namespace {

using Pose = NLEOpenGL3DBoxTransition::Pose;

constexpr float kPi = 3.14159265F;

/// How far the camera draws back in the middle of the way: 1 at s = 0.5, about 0 at both ends.
float Recession(float s) {
    return std::exp(-20.0F * (s - 0.5F) * (s - 0.5F));
}

Pose BounceLeft(float s) {
    const float b = Bounce(s);
    return {.processTime = b, .model = EulerMatrix(0.0F, -90.0F * b, 0.0F)};
}

Pose HalfTurn(float s) {
    Pose pose{.processTime = s, .model = EulerMatrix(0.0F, -180.0F * s, 0.0F)};
    pose.z -= Recession(s);
    return pose;
}

Pose FlipOver(float s) {
    const float b = BezierAt(0.0F, 0.0F, 1.92F, 1.0F, s);  // swings beyond its end
    return {.processTime = b, .model = EulerMatrix(0.0F, 0.0F, 90.0F * b)};
}

Pose TurnRight(float s) {
    const float b = BezierAt(0.0F, 0.0F, 1.0F, 1.0F, s);
    return {.processTime = b, .model = EulerMatrix(0.0F, 90.0F * b, 0.0F)};
}

Pose FloatBy(float s) {
    const float r = BezierAt(0.0F, 0.0F, 1.0F, 1.0F, s);
    Pose pose{.processTime = s,
              .model = EulerMatrix(-3.6F * std::sin(4.0F * kPi * r), -180.0F * r, 0.0F)};
    pose.y = 0.1F * std::sin(3.0F * kPi * r);
    pose.z -= 1.5F * Recession(s);
    pose.keepsShape = true;
    return pose;
}

struct Variant {
    const char* guid;
    Pose (*curve)(float);
};

constexpr Variant kVariants[] = {
    {"1746D500-2911-41ED-BE27-EA9579BB485F", BounceLeft},
    {"7A8BA0FC-8579-40D3-8117-D0CB8F6012D2", HalfTurn},
    {"3D2FD42E-E235-465B-99AC-1613AD661E89", FlipOver},
    {"75E87EE4-EC9E-4398-BA61-0653057F144A", TurnRight},
    {"B04A402D-5C04-4110-AEAD-2E3DBEC1FEFF", FloatBy},
};

const bool kRegistered =
    RegisterEffect("NLEOpenGL3DBoxTransition", MakeEffect<NLEOpenGL3DBoxTransition>,
                   {kVariants[0].guid, kVariants[1].guid, kVariants[2].guid, kVariants[3].guid,
                    kVariants[4].guid});

}  // namespace

NLEOpenGL3DBoxTransition::NLEOpenGL3DBoxTransition(std::shared_ptr<NLEFilterInfo> filterInfo)
    : NLEOpenGLFilter(std::move(filterInfo)), curve(nullptr) {
    for (const Variant& variant : kVariants) {
        if (info->guid == variant.guid) curve = variant.curve;
    }
}

int32_t NLEOpenGL3DBoxTransition::InitParams() {
    engine->AddUniformMat4("uMVP", mvp.data());
    engine->AddUniformFloat("uProcessTime", 0.0F);
    return kFilterOk;
}

int32_t NLEOpenGL3DBoxTransition::DoEffect(const FrameRecord& second, const FrameRecord& first,
                                           FrameRecord& out, int32_t frameWidth,
                                           int32_t frameHeight, int32_t) {
    if (!engine) return kFilterFailed;
    const FrameTime time = Time();
    UploadParams();
    UploadGlobalTime(*engine, time);
    engine->SetUniformFloat("iFrame", static_cast<float>(position));
    int32_t slot = 0;
    SetInputFrame(slot, first);
    SetInputFrame(slot, second);

    if (curve) {
        const Pose pose = curve(SmoothTime(std::min(time.Progress(), 1.0F)));
        engine->SetUniformFloat("uProcessTime", pose.processTime);
        mvp = Multiply(Multiply(projection, Translation(0.0F, pose.y, pose.z)), pose.model);
        if (pose.keepsShape && frameWidth > 0 && frameHeight > 0) {
            const float aspect = static_cast<float>(frameWidth) / static_cast<float>(frameHeight);
            mvp = Multiply(Multiply(ScaleY(aspect), mvp), ScaleY(1.0F / aspect));
        }
    }
    engine->SetUniformMat4("uMVP", mvp.data());
    HandOverBoxMesh(*engine, CubeMesh());
    BindFirstMaterial(*engine, slot, textureFrames.get());
    return RenderTo(out);
}

}  // namespace kelmo
