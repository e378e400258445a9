// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/text/vector/vector_text_3d_effect.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "framework/filter/effect_registry.h"
#include "framework/filter/filter_guids.h"
#include "framework/shared/picture_record.h"
#include "framework/textures/material_binding.h"
#include "platform/host_access.h"

namespace kelmo {
namespace {

const bool kRegistered = RegisterEffect("NLEOpenGLVectorTextRoundBevel3DEffect",
                                        MakeEffect<NLEOpenGLVectorTextRoundBevel3DEffect>,
                                        {"393B593B-8642-4702-AE9F-468D4687E495"});

const bool kSaberRegistered = RegisterEffect(
    "NLEOpenGLVectorText3DEdgeSaberEffect", MakeEffect<NLEOpenGLVectorText3DEdgeSaberEffect>,
    {"VectorText3D", "AD6C1DC5-2EE9-A6D4-B624-6C22E9FE15FE"});

constexpr const char* kGlowSourceGuid = "508D116E-422F-4360-843A-034765A6B39B";
constexpr const char* kComposeGuid = "2825B909-5C51-FBFB-6B48-69E03D4D8FE7";
constexpr const char* kBoomComposeGuid = "59C58FC9-6DEB-4DE3-9020-DEA787548785";
constexpr const char* kSaberComposeGuid = "CB6B9622-87BD-42A2-A813-DBF5E377C5F3";
constexpr const char* kTextPathParam = "TextPath";
constexpr const char* kTransformParam = "TransformParam";
constexpr int32_t kBlendOfGlow = 3;
/// Targets: the object while what glows is drawn.
constexpr int32_t kBehindBoom = 0;
constexpr int32_t kBehindGlobalBoom = 1;

void SetFloat(NLEOpenGLFilter& stage, const char* name, float value) {
    stage.SetParam(name, kParamFloat, NLEParamValue::Float(value));
}

void SetInt(NLEOpenGLFilter& stage, const char* name, int32_t value) {
    stage.SetParam(name, kParamInt, NLEParamValue::Int(value));
}

}  // namespace

NLEOpenGLVectorText3DEffect::NLEOpenGLVectorText3DEffect(std::shared_ptr<NLEFilterInfo> filterInfo)
    : NLEOpenGLFilter(std::move(filterInfo)),
      glowSource(stages.Add(kGlowSourceGuid)),
      boomBlur(blurs.AddAs<NLEOpenGLBeamEclosionEffect>(kBeamEclosionGuid)),
      globalBoomBlur(blurs.AddAs<NLEOpenGLBeamEclosionEffect>(kBeamEclosionGuid)),
      compose(stages.Add(kComposeGuid)),
      boomCompose(stages.Add(kBoomComposeGuid)),
      saberCompose(stages.Add(kSaberComposeGuid)),
      emptyPicture(cv::Mat::zeros(4, 4, CV_8UC4)) {
    needCpuFrame = 1;
    engineFlag = 1;
}

int32_t NLEOpenGLVectorText3DEffect::Resize(int32_t newWidth, int32_t newHeight,
                                            int32_t newStride) {
    stages.Resize(newWidth, newHeight, newStride);
    blurs.Resize(WorkingSize::For(newWidth, newHeight));
    return NLEOpenGLFilter::Resize(newWidth, newHeight, newStride);
}

int32_t NLEOpenGLVectorText3DEffect::InitEffect() {
    stages.InitEffects();
    blurs.InitEffects();
    return NLEOpenGLFilter::InitEffect();
}

int32_t NLEOpenGLVectorText3DEffect::InitParams() {
    engine->AddUniformMat4("uMVP", mvp.data());
    engine->AddUniformMat4("uModel", model.data());
    for (int i = 0; i < 2; ++i) engine->AddRenderTarget();
    // Asked for, so that the host hands them over from the start.
    FindParam(kTextPathParam);
    FindParam(kTransformParam);
    materialIsUp = meshIsUp = false;
    return kFilterOk;
}

void NLEOpenGLVectorText3DEffect::TakeHostObjects() {
    NLEParamValue value;
    if (FindParamValue(kTextPathParam, value)) {
        if (auto* const text = static_cast<TextPath*>(value.AsPointer())) {
            if (geometry.TakeText(*text)) LogInfo("Get TextPath Success:%d", 1);
            // The host's object is there for this frame alone.
            SetParam(kTextPathParam, kParamPointer, NLEParamValue::Pointer(nullptr));
        }
    }
    if (FindParamValue(kTransformParam, value) && value.type == kParamPointer) {
        if (const auto* const numbers = static_cast<const float*>(value.AsPointer())) {
            std::copy_n(numbers, 7, &transform.scaleX);
            SetParam(kTransformParam, kParamPointer, NLEParamValue::Pointer(nullptr));
        }
    }
}

TextSolid NLEOpenGLVectorText3DEffect::WantedSolid() {
    MeshShape shape;
    shape.hiddenFillingSurface = IntOr("HiddenFillingSurface", 0);
    shape.modelType = IntOr("ModelType", 0);
    shape.bevelSize = FloatOr("BevelSize", 0.0F);
    shape.borderThickness = FloatOr("BorderThickness", 0.0F);
    shape.bevelDepth = FloatOr("BevelDepth", 1.0F);
    shape.bevelCurve = FloatOr("BevelCurve", 0.0F);
    shape.baseBevelSegments = IntOr("BaseBevelSegments", 20);
    shape.upperBevelSegments = IntOr("UpperBevelSegments", 20);
    int32_t segments = 0;
    shape.bevelSegments = FindInt("BevelSegments", segments) ? segments + 1 : 20;
    shape.upperDoubleExtrude = IntOr("UpperDoubleExtrude", 0);
    shape.borderBevelSize = FloatOr("BorderBevelSize", 0.15F);
    shape.upperBevelSize = FloatOr("UpperBevelSize", 1.0F);
    shape.baseBevelSize = FloatOr("BaseBevelSize", 0.5F);
    shape.edgeExtrusionDepth = FloatOr("EdgeExtrusionDepth", 1.0F);
    shape.extrusionType = IntOr("ExtrusionType", 0);
    shape.enableSubdivision = IntOr("enable_subdivision", 0) != 0;
    shape.levelSubdivision = IntOr("level_subdivision", 0);
    shape.wireframe = IntOr("Wireframe", 0);
    shape.uvMapMode = IntOr("UVMapMode", 0);
    TextSolid solid;
    solid.shape = AdjustShape(shape);
    float segment = 0.0F;
    if (FindFloat("segment", segment)) solid.segment = segment / 1000.0F;
    solid.threshold = IntOr("threshold", solid.threshold);
    solid.extrude = FloatOr("Extrude", solid.extrude);
    solid.reverse = IntOr("reverse", 0) == 1;
    return solid;
}

void NLEOpenGLVectorText3DEffect::GiveMesh() {
    VectorMesh* const mesh = geometry.Mesh();
    meshIsUp = mesh != nullptr;
    if (!mesh) return;
    const auto give = [&](const char* name, int32_t components, const float* data) {
        engine->AddVertexAttribute(name, components, data, true, false);
    };
    give("position", VectorMesh::kPositionComponents, mesh->position.get());
    give("texcoord", VectorMesh::kTexcoordComponents, mesh->texcoord.get());
    give("normals", VectorMesh::kNormalComponents, mesh->normals.get());
    give("tangents", VectorMesh::kTangentComponents, mesh->tangents.get());
    give("meshInfo", VectorMesh::kMeshInfoComponents, mesh->meshInfo.get());
    give("centers", VectorMesh::kCenterComponents, mesh->centers.get());
    engine->SetVertexCount(3 * mesh->triangleCount);
    if (IntOr("Wireframe", 0) != 1) {
        engine->SetDrawType(kDrawTriangles);
        return;
    }
    engine->SetDrawType(kDrawIndexedLines);
    mesh->BuildElements();
    engine->AddVertexAttribute("element", VectorMesh::kElementComponents, mesh->elements.get(),
                               true, true);
}

void NLEOpenGLVectorText3DEffect::PrepareGeometry(const Call& call) {
    TakeHostObjects();
    cv::Mat picture;
    if (!geometry.HasText()) GetMat(picture, call.first);
    const bool rebuilt = geometry.Prepare(picture, {call.width, call.height}, WantedSolid());
    if (rebuilt || (!meshIsUp && geometry.Mesh())) GiveMesh();
}

void NLEOpenGLVectorText3DEffect::SendEnvironmentAngle() {
    if (IntOr("AutoEnvAngleRotate", 0) != 1) return;
    const FrameTime time = Time();
    const float start = FloatOr("Env_angle", 0.0F);
    const float since = std::clamp(time.position - FloatOr("AutoRotateStartTimePos", 0.0F), 0.0F,
                                   std::max(time.duration, 0.0F));
    const auto speed = static_cast<float>(IntOr("AutoRotateSpeed", 0));
    engine->SetUniformFloat("Env_angle", start + speed * 0.1F * kTicksPerSecond * since);
}

void NLEOpenGLVectorText3DEffect::SendScene() {
    const Contours& outline = geometry.Outline();
    TextScene scene;
    scene.frame = {engine->GetWidth(), engine->GetHeight()};
    scene.flat = outline.m_HasDecoration;
    scene.camera = {FloatOr("CameraPos_x", 0.0F), FloatOr("CameraPos_y", 0.0F),
                    FloatOr("CameraPos_z", 2.4F)};
    scene.up = {FloatOr("CameraUp_x", 0.0F), FloatOr("CameraUp_y", 1.0F),
                FloatOr("CameraUp_z", 0.0F)};
    scene.position = {FloatOr("Position_X", 0.0F), FloatOr("Position_Y", 0.0F),
                      scene.flat ? 0.0F : FloatOr("Position_Z", 0.0F)};
    if (!scene.flat) {
        scene.rotation = {FloatOr("Rotate_X", 0.0F), FloatOr("Rotate_Y", 0.0F),
                          FloatOr("Rotate_Z", 0.0F)};
    }
    scene.scale = FloatOr("Scale", 1.0F);
    scene.center = {FloatOr("center_x", 0.0F), FloatOr("center_y", 0.0F)};
    scene.hasText = geometry.HasText();
    scene.textOrigin = outline.m_TextOrigin;
    scene.textCenter = outline.m_TextCenter;
    scene.textAngle = outline.m_TextAngle;
    scene.transform = transform;
    mvp = scene.Mvp();
    model = scene.Model();
    engine->SetUniformMat4("uMVP", mvp.data());
    engine->SetUniformMat4("uModel", model.data());
    variants = {scene.flat ? 0 : IntOr("AnimationType", 0),
                scene.flat ? 0 : IntOr("AnimationExitType", 0)};
    engine->SetVariantIndices(variants);
    const cv::Vec4f bound = geometry.Bound(scene.frame);
    engine->SetUniformVec4("uBound", bound[0], bound[1], bound[2], bound[3]);
    const cv::Vec3f middle = geometry.MiddleCenter();
    engine->SetUniformVec3("uMiddleCharCenter", middle[0], middle[1], middle[2]);
    engine->SetUniformFloat("uContourNum", static_cast<float>(geometry.Groups().size()));
    engine->SetUniformFloat("textAngle", 0.0F);
    UploadGlobalTime(*engine, Time());
    engine->SetUniformFloat("frame_rate", GetFrameRate());
    engine->SetBlendMode(scene.flat ? kBlendOver : kBlendReplace);
    SendEnvironmentAngle();
}

void NLEOpenGLVectorText3DEffect::BindMaterial(int32_t slot) {
    if (!textureFrames) return;
    const auto index = static_cast<std::size_t>(std::max(Time().Tick(), 0.0F));
    for (std::size_t i = 0; i < textureFrames->SlotCount(); ++i, ++slot) {
        const std::size_t count = textureFrames->FrameCount(i);
        if (count == 0 || (count == 1 && materialIsUp)) continue;
        BindMaterialFrame(*engine, slot, textureFrames->Frame(i, index % count));
    }
    materialIsUp = true;
}

int32_t NLEOpenGLVectorText3DEffect::DrawObject() {
    return RenderPass();
}

int32_t NLEOpenGLVectorText3DEffect::DrawGlowSource(const Call& call, const FrameRecord& object,
                                                    FrameRecord& out) {
    if (!glowSource) return kFilterFailed;
    return glowSource->DoEffect(call.first, object, out, call.width, call.height, call.stride);
}

FrameRecord NLEOpenGLVectorText3DEffect::DrawGlow(const Call& call, const char* pass, int32_t kept,
                                                  const char* width, const char* intensity,
                                                  NLEOpenGLBeamEclosionEffect* blur) {
    if (!blur) return PictureRecord(emptyPicture);
    engine->SetUniformInt(pass, 1);
    engine->SetRenderTarget(kept);
    const int32_t drawn = DrawObject();
    engine->SetUniformInt(pass, 0);
    if (drawn != kFilterOk) return PictureRecord(emptyPicture);
    int32_t radius = 0;
    if (FindInt(width, radius)) SetInt(*blur, "uEclosion", radius);
    float strength = 0.0F;
    if (intensity && FindFloat(intensity, strength)) SetFloat(*blur, "Intensity", strength);
    const WorkingSize size = WorkingSize::For(call.width, call.height);
    SetFloat(*blur, "uBoundLeftX", 0.0F);
    SetFloat(*blur, "uBoundLeftY", 0.0F);
    SetFloat(*blur, "uBoundRightX", 1.0F);
    SetFloat(*blur, "uBoundRightY", 1.0F);
    SetFloat(*blur, "uViewSizeWidth", static_cast<float>(size.width));
    SetFloat(*blur, "uViewSizeHeight", static_cast<float>(size.height));
    blur->inputOverride = TextureReference(GetResultFrame());
    return RunSubFilter(*blur, *this, call.second, call.first, size);
}

int32_t NLEOpenGLVectorText3DEffect::DrawPlain(const Call& call) {
    const bool boom = IntOr("enable_boom", 0) != 0 && meshIsUp && compose;
    const bool globalBoom = IntOr("enable_global_boom", 0) != 0 && meshIsUp && boomCompose;
    // Without a mesh a pass would fill the frame.
    if (meshIsUp && DrawObject() != kFilterOk) return kFilterFailed;
    FrameRecord object = meshIsUp ? GetResultFrame() : PictureRecord(emptyPicture);
    FrameRecord spread;
    if (globalBoom) {
        spread = DrawGlow(call, "is_global_boom", kBehindGlobalBoom, "uGlobalEclosion",
                          "uGlobalBoomIntensity", globalBoomBlur);
        object = GetTargetFrame(kBehindGlobalBoom);
    }
    if (!boom && !globalBoom) return DrawGlowSource(call, object, call.out);
    FrameRecord kept = FrameRecord::TargetLess(call.width, call.height, call.stride);
    if (DrawGlowSource(call, object, kept) != kFilterOk) return kFilterFailed;
    FrameRecord picture = glowSource->GetResultFrame();
    if (!boom) {
        SetFloat(*boomCompose, "BoomIntensity", 1.0F);
        return boomCompose->DoEffect(spread, picture, call.out, call.width, call.height,
                                     call.stride);
    }
    const FrameRecord glow = DrawGlow(call, "is_boom", kBehindBoom, "uEclosion", nullptr, boomBlur);
    if (globalBoom) {
        SetFloat(*boomCompose, "BoomIntensity", 1.0F);
        picture = RunSubFilter(*boomCompose, *this, spread, picture, call.width, call.height,
                               call.stride);
    }
    SetInt(*compose, "BlendType", kBlendOfGlow);
    return compose->DoEffect(glow, picture, call.out, call.width, call.height, call.stride);
}

int32_t NLEOpenGLVectorText3DEffect::DoEffect(const FrameRecord& second, const FrameRecord& first,
                                              FrameRecord& out, int32_t frameWidth,
                                              int32_t frameHeight, int32_t frameStride) {
    if (!engine) return kFilterFailed;
    const Call call{second, first, out, frameWidth, frameHeight, frameStride};
    for (NLEOpenGLFilter* const stage : {glowSource, compose, boomCompose, saberCompose}) {
        if (!stage) continue;
        stage->SetPosition(position);
        stage->SetDuration(duration);
    }
    if (glowSource) HandOverParams(params, *glowSource);
    UploadParams();
    PrepareGeometry(call);
    SendScene();
    int32_t slot = 0;
    SetInputFrame(slot, first);
    BindMaterial(1);
    engine->SetDepthTest(true);
    engine->SetDepthWrite(true);
    engine->SetCullFace(false);
    engine->SetUniformInt("is_boom", 0);
    engine->SetUniformInt("is_global_boom", 0);
    return DrawPlain(call);
}

}  // namespace kelmo
