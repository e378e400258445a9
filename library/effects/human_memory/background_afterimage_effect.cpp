// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/human_memory/background_afterimage_effect.h"

#include <opencv2/imgproc.hpp>
#include <utility>

#include "effects/human_memory/random_shade.h"
#include "framework/filter/effect_registry.h"
#include "framework/filter/filter_guids.h"
#include "framework/shared/working_size.h"
#include "framework/textures/material_binding.h"

namespace kelmo {
namespace {

const bool kRegistered = RegisterEffect(
    "NLEOpenGLBackGroundAfterimageEffect", MakeEffect<NLEOpenGLBackGroundAfterimageEffect>,
    {"90CD42E2-C6E4-4486-4D36-69E3D8395E0C", "8C9CBB8B-A655-49D7-A608-07AF0FB52B0F",
     "34964BC6-B535-4D5B-B517-32EB4B09B404", "AEDC85E7-C1E3-4002-ADA1-6BFF483FEAF3",
     "07B689E1-0287-5738-96F8-C8A0547979ED", "FF8050A8-1F5C-0081-1226-9E3BC39A1090",
     "FFC87BD3-C536-920F-9973-F6300001D2B9", "25F4A4EC-D312-6504-5C7C-9CC83EF39822",
     "2EA4D05F-01C6-DDF0-423D-523225FBB41B", "27C12D95-7DAC-582B-EDC6-7F7715474C74",
     kBackGroundAfterimageGuid});

constexpr int32_t kWhite = 0xFFFFFF;
/// By how much the mask is thinned, in pixels of `kThinningRows` rows.
constexpr double kThinning = 5.0;
constexpr double kThinningRows = 308.0;

}  // namespace

NLEOpenGLBackGroundAfterimageEffect::NLEOpenGLBackGroundAfterimageEffect(
    std::shared_ptr<NLEFilterInfo> filterInfo)
    : NLEOpenGLCombineFilter(std::move(filterInfo)),
      accumFilter(stages.Add(kBackGroundAccumulationGuid)),
      maskMat(cv::Mat::zeros(2, 2, CV_8UC4)) {
    needCpuFrame = 1;
}

int32_t NLEOpenGLBackGroundAfterimageEffect::InitParams() {
    engine->AddUniformFloat("uTime", 0.0F);
    engine->AddUniformFloat("uShadow", 0.0F);
    color.Declare(*engine);
    color1.Declare(*engine);
    return kFilterOk;
}

int32_t NLEOpenGLBackGroundAfterimageEffect::InitEffect() {
    stages.InitEffects();
    return NLEOpenGLCombineFilter::InitEffect();
}

int32_t NLEOpenGLBackGroundAfterimageEffect::Resize(int32_t newWidth, int32_t newHeight,
                                                    int32_t newStride) {
    const WorkingSize size = WorkingSize::For(newWidth, newHeight);
    stages.Resize(size);
    if (maskMat.size() != cv::Size(size.width, size.height)) {
        maskMat = cv::Mat::zeros(size.height, size.width, CV_8UC4);
    }
    return NLEOpenGLCombineFilter::Resize(newWidth, newHeight, newStride);
}

bool NLEOpenGLBackGroundAfterimageEffect::ChooseColors() {
    const bool random = IntOr("randomColor", 0) == 1;
    if (random) {
        Srand(static_cast<uint32_t>(position));
        colorValue = RandomShade(colorValue);
    }
    engine->SetUniformInt("color", colorValue);
    color.Set(*engine, colorValue);
    int32_t second = 0;
    if (FindInt("color1", second)) {
        engine->SetUniformInt("color1", second);
        color1.Set(*engine, second);
    }
    return random;
}

void NLEOpenGLBackGroundAfterimageEffect::Accumulate(const FrameRecord& second, bool random,
                                                     int32_t frameWidth, int32_t frameHeight,
                                                     int32_t frameStride) {
    if (!accumFilter) return;
    int32_t mirror = 0;
    mirrored = false;
    if (FindInt("mirror", mirror)) {
        accumFilter->SetParam("mirror", kParamInt, NLEParamValue::Int(mirror));
        mirrored = mirror == 1;
    }
    if (!random) colorValue = kWhite;
    accumFilter->SetParam("color", kParamInt, NLEParamValue::Int(colorValue));
    RunSubFilter(*accumFilter, *this, second, maskFrame, frameWidth, frameHeight, frameStride);
}

void NLEOpenGLBackGroundAfterimageEffect::BindTrails(int32_t& slot, int32_t frameWidth,
                                                     int32_t frameHeight, int32_t frameStride) {
    if (!accumFilter) return;
    for (const int32_t target : {0, 1, 2}) {
        if (target == 1 && !mirrored) continue;
        engine->SetInputTexture(slot++, accumFilter->GetTargetFrame(target), frameWidth,
                                frameHeight, frameStride);
    }
}

void NLEOpenGLBackGroundAfterimageEffect::SendShadow() {
    if (IntOr("randomShadow", 0) != 1) return;
    const float side = position / 5 % 2 == 0 ? -1.0F : 1.0F;
    const float part = static_cast<float>(position % 5) / 5.0F;
    engine->SetUniformFloat("uShadow", FloatOr("shadow_x", 0.0F) * side * part);
}

void NLEOpenGLBackGroundAfterimageEffect::ThinMask() {
    if (FindParam("MaskRatio")) {
        erodeMask = false;
    } else if (erodeMask && maskFrame.pixels) {
        const auto size = static_cast<int>(maskMat.rows * kThinning / kThinningRows);
        if (size < 1) return;
        cv::erode(maskMat, maskMat, cv::getStructuringElement(cv::MORPH_RECT, {size, size}));
    }
}

int32_t NLEOpenGLBackGroundAfterimageEffect::DoEffect(const FrameRecord& second,
                                                      const FrameRecord& first, FrameRecord& out,
                                                      int32_t frameWidth, int32_t frameHeight,
                                                      int32_t frameStride) {
    if (!engine) return kFilterFailed;
    if (accumFilter) HandOverParams(params, *accumFilter);
    UploadParams();
    colorValue = IntOr("color", colorValue);
    const WorkingSize working = WorkingSize::For(first.width, first.height);
    const cv::Size size(working.width, working.height);
    if (!GetHumanMask(maskFrame, aiHandle.Get(), maskMat, first, false, true, &size, false, 4)) {
        return kFilterFailed;
    }
    const bool random = ChooseColors();
    Accumulate(second, random, frameWidth, frameHeight, frameStride);
    engine->SetUniformFloat("uTime", Time().Tick());
    SendShadow();
    int32_t slot = 0;
    SetInputFrame(slot, first);
    BindTrails(slot, frameWidth, frameHeight, frameStride);
    ThinMask();
    SetInputFrame(slot, maskFrame);
    BindFirstMaterial(*engine, slot, textureFrames.get());
    return RenderTo(out);
}

}  // namespace kelmo
