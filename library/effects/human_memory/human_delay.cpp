// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/human_memory/human_delay.h"

#include <cstdlib>
#include <opencv2/imgproc.hpp>
#include <utility>

#include "effects/human/mask_stage.h"
#include "effects/human/parallel_mask_blend_invoker.h"
#include "framework/filter/effect_registry.h"
#include "framework/shared/picture_record.h"

namespace kelmo {
namespace {

constexpr const char* kCutoutGuid = "899890E7-05B3-46ED-B42D-4C13F37A2DDE";

const bool kRegistered = RegisterEffect("NLEOpenGLHumanDelay", MakeEffect<NLEOpenGLHumanDelay>,
                                        {"8637F30D-5F33-421B-83FC-594F95BAEC3E", kCutoutGuid});

constexpr int32_t kCutoutStep = 5;
/// Distance of the copies in frames, by the speed from 1 on.
constexpr int32_t kSteps[] = {30, 20, 15};
/// A jump of the host from here on is another moment.
constexpr int64_t kJump = 3;

bool IsCutout(const std::shared_ptr<NLEFilterInfo>& info) {
    return info && info->guid == kCutoutGuid;
}

AIImage ImageOf(const FrameRecord& frame) {
    return {frame.pixels, frame.width, frame.height, frame.stride};
}

}  // namespace

NLEOpenGLHumanDelay::NLEOpenGLHumanDelay(std::shared_ptr<NLEFilterInfo> filterInfo)
    : NLEOpenGLFilter(std::move(filterInfo)),
      fixedConfig(IsCutout(info)),
      aiHandle(fixedConfig ? kAIMaskFilter : kAIEdgeMaskFilter),
      copyStep(fixedConfig ? kCutoutStep : kSteps[0]) {
    needCpuFrame = 1;
    Restart();
}

int32_t NLEOpenGLHumanDelay::InitParams() {
    for (int32_t i = 0; i <= kCopies; ++i) engine->AddInputTexture(width, height, stride, true);
    return kFilterOk;
}

void NLEOpenGLHumanDelay::Restart() {
    delayQueue.Restart(static_cast<std::size_t>(copyStep * kCopies));
}

void NLEOpenGLHumanDelay::ReadSettings() {
    if (fixedConfig || params.size() < 2) return;
    previousValue = std::exchange(currentValue, CurrentInt(*params[0]));
    const int32_t speed = CurrentInt(*params[1]);
    if (speed == lastSpeed) return;
    lastSpeed = speed;
    if (speed >= 1 && speed <= static_cast<int32_t>(std::size(kSteps)))
        copyStep = kSteps[speed - 1];
    Restart();
}

bool NLEOpenGLHumanDelay::MakePresent(const FrameRecord& second, const FrameRecord& first) {
    cv::Mat picture;
    GetMat(picture, first);
    if (picture.empty() || picture.type() != CV_8UC4) return false;
    const cv::Size size = MaskStageSize(picture.cols, picture.rows, IntOr(kDownsampleParam, 1));
    if (size != picture.size()) {
        cv::resize(picture, reduced, size, 0.0, 0.0, cv::INTER_LINEAR);
        picture = reduced;
    }
    mask.create(size, CV_8UC4);
    mask.setTo(cv::Scalar::all(0));
    if (aiHandle) {
        AIEffectLib().transform(aiHandle.Get(), ImageOf(PictureRecord(mask)), ImageOf(second),
                                ImageOf(PictureRecord(picture)));
    }
    if (fixedConfig) BlendWithMask(cut, picture, mask);
    return true;
}

void NLEOpenGLHumanDelay::BindPast(int32_t& slot) {
    for (int32_t i = 0; i < kCopies; ++i) {
        const auto age = static_cast<std::size_t>(i == 0 ? 1 : i * copyStep);
        SetInputFrame(slot, PictureRecord(delayQueue.At(age)));
    }
}

int32_t NLEOpenGLHumanDelay::DoEffect(const FrameRecord& second, const FrameRecord& first,
                                      FrameRecord& out, int32_t, int32_t, int32_t) {
    if (!engine) return kFilterFailed;
    ReadSettings();
    if (std::llabs(static_cast<int64_t>(lastPosition) - position) >= kJump) Restart();
    UploadTimeAndLength(*engine, Time());
    UploadParams();
    if (!MakePresent(second, first)) return kFilterFailed;
    const cv::Mat& present = fixedConfig ? cut : mask;
    int32_t slot = 0;
    SetInputFrame(slot, first);
    BindPast(slot);
    if (currentValue == previousValue) {
        delayQueue.Push(
            present, fixedConfig ? PastPictures::Content::kCutout : PastPictures::Content::kMask);
    }
    SetInputFrame(slot, PictureRecord(present));
    if (RenderTo(out) != kFilterOk) return kFilterFailed;
    lastPosition = position;
    return kFilterOk;
}

}  // namespace kelmo
