// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/scene/particles/particle_form_effect.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "framework/filter/effect_registry.h"
#include "framework/textures/material_binding.h"

namespace kelmo {
namespace {

const bool kFormRegistered =
    RegisterEffect("NLEOpenGLParticleFormEffect", MakeEffect<NLEOpenGLParticleFormEffect>,
                   {"ParticleForm", "379593C5-3D85-3708-A285-AF2E96539228"});
const bool kUnityRegistered =
    RegisterEffect("NLEOpenGLFormParticleUnityEffect", MakeEffect<NLEOpenGLFormParticleUnityEffect>,
                   {"FormParticleUnity", "5A2DD7F4-7D9C-841B-3066-3F4ABEC33C4C"});

constexpr const char* kBackgroundGuid = "22CB3F28-3DE4-411E-A555-6A19D91C0B36";
constexpr float kFormDistance = 3.4F;
constexpr float kUnityDistance = 2.6F;

/// A camera that stands `distance` in front of the origin and sees the place (a, b) in the middle
/// of its picture, where it would have been without moving there.
Matrix4 ViewFrom(float a, float b, float distance) {
    return Multiply(Multiply(Translation(-a, -b, 0.0F), Projection()),
                    Translation(a, b, -distance));
}

struct LightColor {
    const char* parameter;
    const char* uniform;
    float usual[3];
};

constexpr LightColor kLightColors[] = {
    {"LightingPoint0Ambient", "uLightingPoint0AmbientColor", {0.1F, 0.1F, 0.1F}},
    {"LightingPoint0Diffuse", "uLightingPoint0DiffuseColor", {0.3F, 0.3F, 0.3F}},
    {"LightingPoint0Specular", "uLightingPoint0SpecularColor", {1.0F, 1.0F, 1.0F}},
};

float ColorByte(int32_t rgb, int shift) {
    return static_cast<float>((static_cast<uint32_t>(rgb) >> shift) & 255U) / 255.0F;
}

}  // namespace

NLEOpenGLParticleFormEffect::NLEOpenGLParticleFormEffect(std::shared_ptr<NLEFilterInfo> filterInfo)
    : NLEOpenGLFilter(std::move(filterInfo)), background(stages.Add(kBackgroundGuid)) {}

int32_t NLEOpenGLParticleFormEffect::InitEffect() {
    stages.InitEffects();
    return NLEOpenGLFilter::InitEffect();
}

int32_t NLEOpenGLParticleFormEffect::Resize(int32_t newWidth, int32_t newHeight,
                                            int32_t newStride) {
    stages.Resize(newWidth, newHeight, newStride);
    return NLEOpenGLFilter::Resize(newWidth, newHeight, newStride);
}

int32_t NLEOpenGLParticleFormEffect::InitParams() {
    engine->AddUniformMat4("uMVP", mvp.data());
    colorBytes.Declare(*engine);
    engine->AddUniformInt("uCount", 0);
    engine->AddUniformFloat("uParticleSize", 1.0F);
    engine->AddUniformFloat("Z_Offset", 1.0F);
    return kFilterOk;
}

Matrix4 NLEOpenGLParticleFormEffect::Camera(float turn) {
    const Matrix4 view =
        ViewFrom(-FloatOr("center_x", 0.0F), FloatOr("center_y", 0.0F), kFormDistance);
    const Matrix4 fixed =
        Rotation(FloatOr("rotate_x", 0.0F), -FloatOr("rotate_y", 0.0F), FloatOr("rotate_z", 0.0F));
    const float radians = turn * 0.017453292F;
    const float c = std::cos(radians), s = std::sin(radians);
    Matrix4 about = kIdentity;
    about[0] = c;
    about[2] = -s;
    about[8] = s;
    about[10] = c;
    return Multiply(Multiply(view, fixed), about);
}

void NLEOpenGLParticleFormEffect::SetMotion(int32_t frameWidth, int32_t frameHeight) {
    const int32_t frames = IntOr("rotate_frame_count", 0);
    const float t =
        static_cast<float>(std::min(position, frames)) / static_cast<float>(std::max(frames, 1));
    const auto way = [&](const char* start, const char* end) {
        const float from = FloatOr(start, 0.0F);
        return from + (FloatOr(end, 0.0F) - from) * t;
    };
    engine->SetUniformFloat("uParticleSize", way("uParticleSize_start", "uParticleSize_end"));
    engine->SetUniformFloat("Z_Offset", way("Z_Offset_start", "Z_Offset_end"));
    const float along = way("uCount_start", "uCount_end");
    const auto count =
        static_cast<int32_t>(std::clamp(along, 0.0F, static_cast<float>(ParticleLattice::kMost)));
    engine->SetUniformInt("uCount", count);
    const cv::Size wanted = ParticleLattice::FlatSize(count, frameWidth, frameHeight);
    if (wanted != grid) {
        lattice.BuildFlat(wanted);
        grid = wanted;
    }
    engine->AddVertexAttribute("position", 3, lattice.Positions(), true, false);
    engine->AddVertexAttribute("texcoord", 2, lattice.Corners(), true, false);
    engine->SetVertexCount(lattice.VertexCount());
    mvp = Camera(way("rotate_start_angle", "rotate_end_angle"));
    engine->SetUniformMat4("uMVP", mvp.data());
}

int32_t NLEOpenGLParticleFormEffect::DrawOverBackground(FrameRecord& out, int32_t frameWidth,
                                                        int32_t frameHeight, int32_t frameStride) {
    FrameRecord inner = FrameRecord::TargetLess(frameWidth, frameHeight, frameStride);
    if (RenderTo(inner) != kFilterOk) return kFilterFailed;
    background->SetPosition(position);
    background->SetDuration(duration);
    return background->DoEffect({}, GetResultFrame(), out, frameWidth, frameHeight, frameStride);
}

int32_t NLEOpenGLParticleFormEffect::DoEffect(const FrameRecord&, const FrameRecord& first,
                                              FrameRecord& out, int32_t frameWidth,
                                              int32_t frameHeight, int32_t frameStride) {
    if (!engine) return kFilterFailed;
    UploadParams();
    colorBytes.Set(*engine, IntOr("color", 0));
    if (background) {
        background->SetParam("color", kParamInt, NLEParamValue::Int(IntOr("BGColor", 0)));
    }
    SetMotion(frameWidth, frameHeight);
    UploadGlobalTime(*engine, Time());
    int32_t slot = 0;
    SetInputFrame(slot, first);
    BindFirstMaterial(*engine, slot, textureFrames.get());
    engine->SetBlendMode(kBlendAdd);
    engine->SetDrawType(kDrawTriangles);
    const bool withBackground = background && IntOr("enableBGColor", 0) == 1;
    return withBackground ? DrawOverBackground(out, frameWidth, frameHeight, frameStride)
                          : RenderTo(out);
}

NLEOpenGLFormParticleUnityEffect::NLEOpenGLFormParticleUnityEffect(
    std::shared_ptr<NLEFilterInfo> filterInfo)
    : NLEOpenGLFilter(std::move(filterInfo)) {}

int32_t NLEOpenGLFormParticleUnityEffect::InitParams() {
    engine->AddUniformMat4("uMVP", mvp.data());
    engine->AddUniformMat4("uModel", model.data());
    for (const LightColor& color : kLightColors) {
        engine->AddUniformVec3(color.uniform, color.usual[0], color.usual[1], color.usual[2]);
    }
    return kFilterOk;
}

void NLEOpenGLFormParticleUnityEffect::SetLight() {
    for (const LightColor& color : kLightColors) {
        const NLEFilterParams* const param = FindParam(color.parameter);
        if (!param) continue;
        const int32_t rgb = CurrentInt(*param);
        engine->SetUniformVec3(color.uniform, ColorByte(rgb, 16), ColorByte(rgb, 8),
                               ColorByte(rgb, 0));
    }
}

int32_t NLEOpenGLFormParticleUnityEffect::DoEffect(const FrameRecord&, const FrameRecord&,
                                                   FrameRecord& out, int32_t, int32_t, int32_t) {
    if (!engine) return kFilterFailed;
    UploadParams();
    SetLight();
    const cv::Vec3i wanted =
        ParticleLattice::BoxSize({IntOr("uParticleInX", grid[0]), IntOr("uParticleInY", grid[1]),
                                  IntOr("uParticleInZ", grid[2])});
    const bool changed = wanted != grid;
    if (changed) {
        lattice.BuildBox(wanted);
        grid = wanted;
    }
    engine->AddVertexAttribute("position", 4, lattice.Positions(), !changed, false);
    engine->AddVertexAttribute("texcoord", 2, lattice.Corners(), !changed, false);
    engine->SetVertexCount(lattice.VertexCount());
    UploadGlobalTime(*engine, Time());
    model =
        Rotation(FloatOr("rotate_x", 0.0F), FloatOr("rotate_y", 0.0F), FloatOr("rotate_z", 0.0F));
    const Matrix4 view =
        ViewFrom(-FloatOr("center_x", 0.0F), FloatOr("center_y", 0.0F), kUnityDistance);
    mvp = Multiply(view, model);
    engine->SetUniformMat4("uMVP", mvp.data());
    engine->SetUniformMat4("uModel", model.data());
    int32_t slot = 0;
    BindFirstMaterial(*engine, slot, textureFrames.get());
    engine->SetBlendMode(kBlendAdd);
    engine->SetDrawType(kDrawTriangles);
    return RenderTo(out);
}

}  // namespace kelmo
