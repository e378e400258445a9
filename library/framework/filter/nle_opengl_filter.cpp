// SPDX-License-Identifier: GPL-3.0-or-later
#include "framework/filter/nle_opengl_filter.h"

#include <utility>

#include "framework/audio/audio_analysis.h"
#include "framework/engine/effect_engine.h"
#include "framework/textures/material_binding.h"
#include "framework/textures/texture_loader.h"
#include "platform/host_access.h"

namespace kelmo {

NLEOpenGLFilter::NLEOpenGLFilter(std::shared_ptr<NLEFilterInfo> filterInfo)
    : info(std::move(filterInfo)) {}

NLEOpenGLFilter::~NLEOpenGLFilter() = default;

// ---------------------------------------------------------------------------------------------
// Life
// ---------------------------------------------------------------------------------------------

int32_t NLEOpenGLFilter::InitEffect() {
    if (!AcquireEffectEngine()) {
        LogError("kelmo::InitEffect CreateNLEOpenGLEffectEngineInstance is failed!");
        return kFilterNoEngine;
    }
    fragmentPath = info->openglPath;
    if (info->hasVertex) vertexPath = info->vertexPath;
    encrypt = info->encrypt;
    LoadTextures(info, textureFrames, texDescs, asyncTextureLoad != 0);
    CloneParams();
    return CreateEffect(width, height, stride) == kFilterOk ? kFilterOk : kFilterFailed;
}

void NLEOpenGLFilter::CloneParams() {
    params.clear();
    for (int32_t index = 0; index < info->paramCount; ++index) {
        if (const auto param = info->GetParam(index)) params.push_back(CloneParam(*param));
    }
}

bool NLEOpenGLFilter::MakeEngineEffect(int32_t newWidth, int32_t newHeight, int32_t newStride) {
    width = newWidth;
    height = newHeight;
    stride = newStride;
    engine.reset();
    // Looked for when an effect is initialised, not on each frame that lacks one.
    NLEOpenGLEffectEngine* const maker = PresentEffectEngine();
    if (!maker) return false;
    maker->CreateEngineEffect(width, height, stride, engineFlag != 0, fragmentPath.c_str(), engine,
                              encrypt, info->hasVertex ? vertexPath.c_str() : "",
                              info->fragmentExterns, info->vertexExterns);
    return engine != nullptr;
}

int32_t NLEOpenGLFilter::BuildProgram() {
    if (engine->CreateProgram(engine) == 0) return kFilterOk;
    LogError("kelmo:CreateEffect Create OpenGL Effect Failed: %s", info->name.c_str());
    return kFilterFailed;
}

int32_t NLEOpenGLFilter::CreateEffect(int32_t newWidth, int32_t newHeight, int32_t newStride) {
    if (!MakeEngineEffect(newWidth, newHeight, newStride)) return kFilterFailed;

    const std::size_t inputCount = FillInputs();
    InitParams();
    DeclareInputs(inputCount);
    if (info->hasAudio) {
        audioHandle = engine->AddAudioBuffer();
        engine->AddUniformFloat("audio_intensity", 0.0F);
    }
    DeclareCommonUniforms();
    DeclareParams(*engine, params);
    return BuildProgram();
}

std::size_t NLEOpenGLFilter::FillInputs() {
    FrameRecord clip = FrameRecord::TargetLess(width, height, stride);
    clip.renderable = 0;
    int32_t key = 0;
    inputs.try_emplace(key++, clip);
    if (info->transition) inputs.try_emplace(key++, clip);
    const std::size_t slots = textureFrames ? textureFrames->SlotCount() : 0;
    for (std::size_t slot = 0; slot < slots; ++slot) {
        FrameRecord material = clip;
        material.renderable = IsPicture(textureFrames->Frame(slot, 0)) ? 1 : 0;
        inputs.try_emplace(key++, material);
    }
    return static_cast<std::size_t>(key);
}

void NLEOpenGLFilter::DeclareInputs(std::size_t count) {
    for (std::size_t key = 0; key < count; ++key) {
        const FrameRecord& input = inputs[static_cast<int32_t>(key)];
        engine->AddInputTexture(input.width, input.height, input.stride, input.renderable == 0);
    }
}

void NLEOpenGLFilter::DeclareTimeUniforms() {
    engine->AddUniformFloat("global_time", 0.0F);
    engine->AddUniformFloat("total_time", 0.0F);
    engine->AddUniformFloat("fade", 1.0F);
    engine->AddUniformFloat("current_pos", 0.0F);
    engine->AddUniformFloat("total_len", 1.0F);
}

void NLEOpenGLFilter::DeclareCommonUniforms() {
    DeclareTimeUniforms();
    engine->AddUniformFloat("frame_rate", kTicksPerSecond);
    // The whole frame: left, top, width, height.
    engine->AddUniformVec4("orig_roi", 0.0F, 0.0F, 1.0F, 1.0F);
    engine->AddUniformVec4("result_roi", 0.0F, 0.0F, 1.0F, 1.0F);
    engine->AddUniformFloat("roi_angle", 0.0F);
}

int32_t NLEOpenGLFilter::InitParams() {
    return kFilterOk;
}

int32_t NLEOpenGLFilter::Resize(int32_t newWidth, int32_t newHeight, int32_t newStride) {
    if (!engine) return CreateEffect(newWidth, newHeight, newStride);
    if (engine->GetWidth() == newWidth && engine->GetHeight() == newHeight &&
        engine->GetStride() == newStride) {
        sizeChanged = 0;
        return kFilterOk;
    }
    sizeChanged = 1;
    return engine->Resize(newWidth, newHeight, newStride, engine) == 0 ? kFilterOk : kFilterFailed;
}

// ---------------------------------------------------------------------------------------------
// Time
// ---------------------------------------------------------------------------------------------

float NLEOpenGLFilter::GetFrameRate() const {
    const NLEOpenGLFilter* root = this;
    while (root->parent) root = root->parent;
    // Below one frame a second the host's whole number is 0.
    return root->frameRate > 0.0F ? root->frameRate : kTicksPerSecond;
}

FrameTime NLEOpenGLFilter::Time() const {
    return FrameTime::At(position, duration, GetFrameRate());
}

// ---------------------------------------------------------------------------------------------
// Drawing
// ---------------------------------------------------------------------------------------------

int32_t NLEOpenGLFilter::DoEffect(const FrameRecord& second, const FrameRecord& first,
                                  FrameRecord& out, int32_t, int32_t, int32_t) {
    if (!engine) return kFilterFailed;
    int32_t slot = 0;
    SetInputFrame(slot, first);
    SetInputFrame(slot, second);
    const FrameTime time = Time();
    BindMaterialAtTime(*engine, slot, textureFrames.get(), texDescs.get(), time.position);
    UpdateAudio(0.0F);
    UploadTime(*engine, time);
    UploadParams();
    return RenderTo(out);
}

int32_t NLEOpenGLFilter::RenderTo(FrameRecord& out) {
    if (engine->Render(out, engine, 0) == 0) return kFilterOk;
    LogError("kelmo:DoEffect Failed: %s", info->name.c_str());
    return kFilterFailed;
}

int32_t NLEOpenGLFilter::RenderPass() {
    FrameRecord pass =
        FrameRecord::TargetLess(engine->GetWidth(), engine->GetHeight(), engine->GetStride());
    return RenderTo(pass);
}

void NLEOpenGLFilter::SetInputFrame(int32_t& slot, const FrameRecord& frame) {
    if (!engine) return;
    if (frame.HasCpuPixels()) {
        engine->SetInputImage(slot++, frame.pixels, frame.width, frame.height, frame.stride,
                              frame.channels, false, 0);
    } else if (frame.HasTexture()) {
        engine->SetInputTexture(slot++, frame, frame.width, frame.height, frame.stride);
    }
}

void NLEOpenGLFilter::GetMat(cv::Mat& out, const FrameRecord& frame) {
    const bool hasSize = frame.width > 0 && frame.height > 0;
    if (frame.pixels) {
        needCpuFrame = 1;
        const int type = frame.channels == 1 ? CV_8UC1 : CV_8UC4;
        if (hasSize && frame.stride >= frame.width * CV_ELEM_SIZE(type)) {
            out = cv::Mat(frame.height, frame.width, type, frame.pixels,
                          static_cast<std::size_t>(frame.stride));
            return;
        }
        LogError("GetMat: a frame of %d x %d pixels with %d bytes a row", frame.width, frame.height,
                 frame.stride);
    } else if (!frame.isCpu) {
        if (needCpuFrame) LogWarning("GetMat: OpenGL Effect Need Cpu Frame");
        needCpuFrame = 1;
        if (hasSize) {
            if (blackFrame.size() != cv::Size(frame.width, frame.height)) {
                blackFrame = cv::Mat::zeros(frame.height, frame.width, CV_8UC4);
            }
            out = blackFrame;
            return;
        }
    }
    out = cv::Mat(0, 0, CV_8UC4);
}

FrameRecord NLEOpenGLFilter::GetResultFrame() const {
    return engine ? engine->GetResultFrame() : FrameRecord();
}

FrameRecord NLEOpenGLFilter::GetResultFrameAlt() const {
    return engine ? engine->GetResultFrameAlt() : FrameRecord();
}

FrameRecord NLEOpenGLFilter::GetTargetFrame(int32_t index) const {
    return engine ? engine->GetRenderTarget(index) : FrameRecord();
}

}  // namespace kelmo
