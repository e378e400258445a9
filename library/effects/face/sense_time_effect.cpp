// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/face/sense_time_effect.h"

#include <cstdio>
#include <utility>

#include "framework/engine/effect_engine.h"
#include "platform/file_system.h"

namespace kelmo {
namespace {

constexpr const char* kModel =
    "qor_effect/material/models/sensetime/M_SenseME_Face_Video_7.0.0.model";
/// Faces in moving pictures.
constexpr int32_t kModelConfiguration = 0x20000;
constexpr uint64_t kDetectFaces = 1;
/// The library settles on a face that it sees repeatedly.
constexpr int kDetections = 3;

enum TextureIndex : std::size_t { kInput, kOutput };

std::string WithSlash(std::string folder) {
    if (!folder.ends_with('/')) folder += '/';
    return folder;
}

}  // namespace

void ReadBinaryFile(const std::string& path, std::string& bytes) {
    if (ReadWholeFile(path, bytes)) return;
    bytes.clear();
    std::printf(" file not exist: %s\n", path.c_str());
}

NLEOpenGLSenseTimeEffect::NLEOpenGLSenseTimeEffect(std::shared_ptr<NLEFilterInfo> filterInfo,
                                                   FaceSdkPixelFormat inputFormat,
                                                   FaceSdkPixelFormat outputFormat)
    : NLEOpenGLCombineFilter(std::move(filterInfo)),
      inputFormat(inputFormat),
      outputFormat(outputFormat),
      resourceFolder(WithSlash(info ? info->resourcePath : "")) {
    needCpuFrame = 1;
    senseTime = std::make_shared<THIRD_LIBRARY_IMPORT::SenseTimeWrapper>(resourceFolder);
    ready = senseTime->IsReady();
}

NLEOpenGLSenseTimeEffect::~NLEOpenGLSenseTimeEffect() {
    if (!engine) return;
    engine->RunOnGLThread([this] {
        if (humanActionHandle) senseTime->DestroyHumanAction(humanActionHandle);
        humanActionHandle = nullptr;
        if (effectHandle) senseTime->DestroyEffect(effectHandle);
        effectHandle = nullptr;
        textures.Release();
        return true;
    });
}

bool NLEOpenGLSenseTimeEffect::CreateHandles() {
    if (LoadedEngineKind() == EngineKind::kMesa) senseTime->SetOpenGLLibrary("MesaOpengl32.dll");
    senseTime->CreateEffect(&effectHandle);
    PrepareHandle();
    std::string model;
    ReadBinaryFile(resourceFolder + kModel, model);
    senseTime->CreateHumanAction(model, kModelConfiguration, &humanActionHandle);
    return true;
}

int32_t NLEOpenGLSenseTimeEffect::InitParams() {
    // An engine object that is made anew keeps the handles.
    if (!engine || !ready || effectHandle || LoadedEngineKind() == EngineKind::kDx) {
        return kFilterOk;
    }
    engine->RunOnGLThread([this] { return CreateHandles(); });
    return kFilterOk;
}

bool NLEOpenGLSenseTimeEffect::DrawFace(const cv::Mat& picture, const FrameRecord& first,
                                        FrameRecord& out) {
    ApplyParams();
    FaceSdkResult found;
    int32_t result = 0;
    for (int i = 0; i < kDetections; ++i) {
        result = senseTime->DetectHumanAction(
            humanActionHandle, picture.data, inputFormat, picture.cols, picture.rows,
            static_cast<int32_t>(picture.step), 0, kDetectFaces, found);
    }
    faceFound = found.faceCount > 0;
    if (result != 0) return false;
    FaceSdkTexture input{first.texture, picture.cols, picture.rows, inputFormat};
    if (first.isCpu != 0) {
        input.id = textures.Upload(kInput, picture.data, picture.cols, picture.rows,
                                   static_cast<int32_t>(picture.step));
    }
    FaceSdkTexture output{out.texture, out.width, out.height, outputFormat};
    if (out.isCpu != 0) output.id = textures.Upload(kOutput, nullptr, out.width, out.height, 0);
    if (input.id <= 0 || output.id <= 0) return false;
    const FaceSdkRenderInput from{&found, &input, NextTimestamp()};
    FaceSdkResult moved = found;
    FaceSdkRenderOutput to{&output, &moved};
    if (senseTime->Render(effectHandle, from, to) != 0) return false;
    return out.isCpu == 0 ||
           engine->ReadTexture(output.id, out.width, out.height, out.stride, out.pixels);
}

int32_t NLEOpenGLSenseTimeEffect::DoEffect(const FrameRecord&, const FrameRecord& first,
                                           FrameRecord& out, int32_t, int32_t, int32_t) {
    cv::Mat picture;
    GetMat(picture, first);
    if (!engine || !ready || LoadedEngineKind() == EngineKind::kDx) return kFilterFailed;
    if (picture.empty() || picture.type() != CV_8UC4) return kFilterFailed;
    if (!out.HasCpuPixels() && !out.HasTexture()) return kFilterFailed;
    const auto draw = [&] { return DrawFace(picture, first, out); };
    if (!engine->RunOnGLThread(draw)) return kFilterFailed;
    if (!faceFound && !engine->RunOnGLThread(draw)) return kFilterFailed;
    return kFilterOk;
}

}  // namespace kelmo
