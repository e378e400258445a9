// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/human_memory/background_queue_accum_effect.h"

#include <opencv2/imgproc.hpp>
#include <utility>

#include "effects/human_memory/random_shade.h"
#include "framework/filter/effect_registry.h"
#include "framework/filter/filter_guids.h"
#include "framework/shared/working_size.h"
#include "framework/textures/material_binding.h"

namespace kelmo {
namespace {

const bool kRegistered =
    RegisterEffect("NLEOpenGLBackGroundQueueAccumEffect",
                   MakeEffect<NLEOpenGLBackGroundQueueAccumEffect>, {kBackGroundQueueAccumGuid});

/// Coverage of what is a person for certain.
constexpr double kCertain = 100.0;

}  // namespace

NLEOpenGLBackGroundQueueAccumEffect::NLEOpenGLBackGroundQueueAccumEffect(
    std::shared_ptr<NLEFilterInfo> filterInfo)
    : NLEOpenGLCombineFilter(std::move(filterInfo)) {
    needCpuFrame = 1;
}

int32_t NLEOpenGLBackGroundQueueAccumEffect::InitParams() {
    constexpr WorkingSize kSize = WorkingSize::Wide();
    for (int32_t i = 0; i < kPictures; ++i) engine->AddRenderTarget();
    engine->AddUniformVec4("uBound", 0.0F, 0.0F, 1.0F, 1.0F);
    engine->AddUniformFloat("uTime", 0.0F);
    for (const ColorUniform* uniform : {&color, &color1, &color2}) uniform->Declare(*engine);
    engine->AddUniformFloat("uViewSizeWidth", static_cast<float>(kSize.width));
    engine->AddUniformFloat("uViewSizeHeight", static_cast<float>(kSize.height));
    return kFilterOk;
}

void NLEOpenGLBackGroundQueueAccumEffect::SendBound() {
    cv::threshold(maskMat, certain, kCertain, 250.0, cv::THRESH_BINARY);
    const cv::Rect people = cv::boundingRect(certain);
    int32_t feather = 0;
    const int32_t margin = FindInt("uEclosion", feather) ? feather / 2 + 1 : 0;
    const auto columns = static_cast<float>(certain.cols);
    const auto rows = static_cast<float>(certain.rows);
    engine->SetUniformVec4("uBound", static_cast<float>(people.x - margin) / columns,
                           static_cast<float>(people.y - margin) / rows,
                           static_cast<float>(people.x + people.width + margin) / columns,
                           static_cast<float>(people.y + people.height + margin) / rows);
}

void NLEOpenGLBackGroundQueueAccumEffect::SendColors() {
    int32_t rgb = IntOr("color", 0xFFFFFF);
    if (IntOr("randomColor", 0) == 1) {
        Srand(static_cast<uint32_t>(position));
        rgb = RandomShade(rgb);
    }
    engine->SetUniformInt("color", rgb);
    color.Set(*engine, rgb);
    const std::pair<const char*, const ColorUniform*> others[] = {{"color1", &color1},
                                                                  {"color2", &color2}};
    for (const auto& [name, uniform] : others) {
        if (!FindInt(name, rgb)) continue;
        engine->SetUniformInt(name, rgb);
        uniform->Set(*engine, rgb);
    }
}

int32_t NLEOpenGLBackGroundQueueAccumEffect::MoveQueue(int32_t frameWidth, int32_t frameHeight,
                                                       int32_t frameStride) {
    const bool restarts = clock.Restarts(position);
    for (int32_t i = 0; i + 1 < kPictures; ++i) {
        if (restarts) {
            FrameRecord inside = FrameRecord::TargetLess(frameWidth, frameHeight, frameStride);
            if (RenderTo(inside) != kFilterOk) return kFilterFailed;
        } else {
            // The exchange brings the next picture out and the next one puts it down here.
            engine->SetRenderTarget(i + 1);
        }
        engine->SetRenderTarget(i);
    }
    return kFilterOk;
}

int32_t NLEOpenGLBackGroundQueueAccumEffect::DoEffect(const FrameRecord& second,
                                                      const FrameRecord& first, FrameRecord& out,
                                                      int32_t frameWidth, int32_t frameHeight,
                                                      int32_t frameStride) {
    if (!engine) return kFilterFailed;
    const float ticks = Time().Tick();
    position = MemoryClock::IndexOf(position, GetFrameRate());
    if (clock.Repeats(position)) return kFilterOk;
    UploadParams();
    const WorkingSize working = WorkingSize::For(first.width, first.height);
    const cv::Size size(working.width, working.height);
    if (maskMat.size() != size) maskMat = cv::Mat::zeros(size, CV_8UC1);
    if (!GetHumanMask(maskFrame, aiHandle.Get(), maskMat, first, false, true, &size, true, 1)) {
        return kFilterFailed;
    }
    SendBound();
    SendColors();
    engine->SetUniformFloat("uTime", ticks);
    engine->SetUniformFloat("uViewSizeWidth", static_cast<float>(working.width));
    engine->SetUniformFloat("uViewSizeHeight", static_cast<float>(working.height));
    int32_t slot = 0;
    SetInputFrame(slot, first);
    SetInputFrame(slot, second);
    SetInputFrame(slot, maskFrame);
    BindFirstMaterial(*engine, slot, textureFrames.get());
    if (MoveQueue(frameWidth, frameHeight, frameStride) != kFilterOk) return kFilterFailed;
    if (RenderTo(out) != kFilterOk) return kFilterFailed;
    engine->SetRenderTarget(kPictures - 1);
    clock.Keep(position);
    return kFilterOk;
}

}  // namespace kelmo
