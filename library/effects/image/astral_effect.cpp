// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/image/astral_effect.h"

#include <cmath>
#include <opencv2/imgproc.hpp>

#include "framework/filter/effect_registry.h"
#include "framework/filter/filter_guids.h"
#include "framework/textures/material_binding.h"
#include "framework/textures/texture_file.h"
#include "framework/textures/texture_frames.h"

namespace kelmo {
namespace {

const bool kEffectRegistered =
    RegisterEffect("NLEOpenGLAstralEffect", MakeEffect<NLEOpenGLAstralEffect>, {kAstralMasterGuid});
const bool kFilterRegistered =
    RegisterEffect("NLEOpenGLAstralFilter", MakeEffect<NLEOpenGLAstralFilter>,
                   {"D96CCC6B-621E-44D3-BBF0-6AA3FC643D13"});

constexpr float kSameValue = 1e-6F;

}  // namespace

// ---------------------------------------------------------------------------------------------
// NLEOpenGLAstralEffect
// ---------------------------------------------------------------------------------------------

NLEOpenGLAstralEffect::NLEOpenGLAstralEffect(std::shared_ptr<NLEFilterInfo> filterInfo)
    : NLEOpenGLFilter(std::move(filterInfo)) {
    needCpuFrame = 1;
}

int32_t NLEOpenGLAstralEffect::CreateEffect(int32_t newWidth, int32_t newHeight,
                                            int32_t newStride) {
    if (!MakeEngineEffect(newWidth, newHeight, newStride)) return kFilterFailed;
    engine->AddInputTexture(width, height, stride, true);
    if (info->transition) engine->AddInputTexture(width, height, stride, true);
    const std::size_t slots = textureFrames ? textureFrames->SlotCount() : 0;
    for (std::size_t slot = 0; slot < slots; ++slot) {
        const cv::Mat& picture = textureFrames->Frame(slot, 0);
        engine->AddInputTexture(picture.cols, picture.rows,
                                picture.empty() ? 0 : static_cast<int32_t>(picture.step[0]), false);
    }
    InitParams();
    DeclareTimeUniforms();
    engine->AddUniformArrayVec4("posArray", stars.Positions(), StarAnalysis::kMostStars);
    engine->AddUniformInt("count", StarAnalysis::kMostStars);
    DeclareParams(*engine, params);
    return BuildProgram();
}

NLEOpenGLAstralEffect::Settings NLEOpenGLAstralEffect::ReadSettings() {
    Settings settings;
    if (!params.empty()) settings.density = CurrentNumber(*params[0]);
    if (params.size() > 1) settings.size = CurrentNumber(*params[1]);
    if (params.size() > 2) settings.alpha = CurrentInt(*params[2]);
    return settings;
}

bool NLEOpenGLAstralEffect::UpdateStars(const FrameRecord& first) {
    const Settings now = ReadSettings();
    if (std::abs(now.density - last.density) > kSameValue ||
        std::abs(now.size - last.size) > kSameValue || now.alpha != last.alpha) {
        paramsChanged = true;
        last = now;
    }
    if (firstAnalysis || paramsChanged || position % 2 == 0) {
        paramsChanged = false;
        firstAnalysis = false;
        cv::Mat picture;
        GetMat(picture, first);
        if (!stars.Run(picture, last.density)) return false;
    }
    return stars.Count() >= 1;
}

int32_t NLEOpenGLAstralEffect::DoEffect(const FrameRecord& second, const FrameRecord& first,
                                        FrameRecord& out, int32_t, int32_t, int32_t) {
    if (!engine || !UpdateStars(first)) return kFilterFailed;
    int32_t slot = 0;
    SetInputFrame(slot, first);
    SetInputFrame(slot, second);
    BindStarPictures(slot);
    UploadTimeAndLength(*engine, Time());
    UploadParams();
    engine->SetUniformArrayVec4("posArray", stars.Positions(), StarAnalysis::kMostStars);
    engine->SetUniformInt("count", stars.Count());
    return RenderTo(out);
}

void NLEOpenGLAstralEffect::BindStarPictures(int32_t slot) {
    BindAllMaterialAsImages(*engine, slot, textureFrames.get());
}

// ---------------------------------------------------------------------------------------------
// NLEOpenGLAstralFilter
// ---------------------------------------------------------------------------------------------

NLEOpenGLAstralFilter::NLEOpenGLAstralFilter(std::shared_ptr<NLEFilterInfo> filterInfo)
    : NLEOpenGLAstralEffect(std::move(filterInfo)) {}

NLEOpenGLAstralEffect::Settings NLEOpenGLAstralFilter::ReadSettings() {
    Settings settings;
    FindFloat("density", settings.density);
    FindFloat("size", settings.size);
    FindInt("alpha", settings.alpha);
    return settings;
}

void NLEOpenGLAstralFilter::BindStarPictures(int32_t slot) {
    const NLEFilterParams* const param = FindParam("Profile");
    if (param && param->value.AsText()[0] != 0) {
        const cv::Mat& picture = ProfilePicture(param->value.AsText());
        if (!picture.empty()) {
            BindMaterialFrame(*engine, slot, picture);
            return;
        }
    }
    BindAllMaterial(*engine, slot, textureFrames.get());
}

const cv::Mat& NLEOpenGLAstralFilter::ProfilePicture(const std::string& path) {
    if (path == profilePath) return profile;
    profilePath = path;
    profile.release();
    try {
        cv::Mat picture = ReadImageFile(path);
        if (picture.channels() == 3) cv::cvtColor(picture, picture, cv::COLOR_BGR2BGRA);
        if (picture.channels() == 1) cv::cvtColor(picture, picture, cv::COLOR_GRAY2BGRA);
        cv::flip(picture, picture, 0);
        profile = picture;
    } catch (const cv::Exception&) {
        profile.release();  // the description's own picture stands in
    }
    return profile;
}

}  // namespace kelmo
