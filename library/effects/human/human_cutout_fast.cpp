// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/human/human_cutout_fast.h"

#include <cmath>
#include <opencv2/imgproc.hpp>
#include <utility>

#include "effects/human/mask_stage.h"
#include "effects/human/parallel_mask_blend_invoker.h"
#include "framework/filter/effect_registry.h"
#include "framework/shared/picture_record.h"

namespace kelmo {
namespace {

const bool kRegistered = RegisterEffect(
    "NLEOpenGLHumanCutoutFast", MakeEffect<NLEOpenGLHumanCutoutFast>,
    {"674A02AB-6103-4848-9857-E8FAC858B1F0", "061CA55A-4E9F-4803-BAF4-8FF5EA0AFB06"});

/// The value of "offsetHalfHuman" that wants no middle.
constexpr float kNoMiddle = 0.2F;
/// Levels of a mask up to this one are noise.
constexpr double kFaintest = 10.0;

}  // namespace

NLEOpenGLHumanCutoutFast::NLEOpenGLHumanCutoutFast(std::shared_ptr<NLEFilterInfo> filterInfo)
    : NLEOpenGLCombineFilter(std::move(filterInfo)) {
    needCpuFrame = 1;
}

int32_t NLEOpenGLHumanCutoutFast::InitParams() {
    engine->AddUniformFloat("midHuman", midHuman);
    engine->AddInputTexture(width, height, stride, true);
    return kFilterOk;
}

float NLEOpenGLHumanCutoutFast::MiddleOfPerson() {
    cv::threshold(maskMat, clearMask, kFaintest, 255.0, cv::THRESH_TOZERO);
    cv::cvtColor(clearMask, greyMask, cv::COLOR_BGR2GRAY);
    cv::reduce(greyMask, columnSums, 0, cv::REDUCE_SUM, CV_32F);
    const float* const sums = columnSums.ptr<float>();
    const int columns = columnSums.cols;
    int left = 0;
    while (left < columns && sums[left] <= 0.0F) ++left;
    if (left == columns) return 0.0F;
    int end = left;
    while (end < columns && sums[end] > 0.0F) ++end;
    const int right = end < columns ? end - 1 : 0;
    return static_cast<float>((left + right) * 0.5 / columns);
}

void NLEOpenGLHumanCutoutFast::SendMiddle() {
    float offset = 0.0F;
    if (!FindFloat("offsetHalfHuman", offset)) return;
    midHuman = std::abs(offset - kNoMiddle) <= 0.00001F ? 1.0F : MiddleOfPerson();
    engine->SetUniformFloat("midHuman", midHuman);
}

int32_t NLEOpenGLHumanCutoutFast::DoEffect(const FrameRecord&, const FrameRecord& first,
                                           FrameRecord& out, int32_t, int32_t, int32_t) {
    if (!engine) return kFilterFailed;
    cv::Mat picture;
    GetMat(picture, first);
    if (picture.empty() || picture.type() != CV_8UC4) return kFilterFailed;
    const cv::Size size = MaskStageSize(picture.cols, picture.rows, IntOr(kDownsampleParam, 1));
    if (size != picture.size()) {
        cv::resize(picture, reduced, size, 0.0, 0.0, cv::INTER_LINEAR);
        picture = reduced;
    }
    FrameRecord mask;
    if (!GetHumanMask(mask, aiHandle.Get(), maskMat, PictureRecord(picture), true, true, &size,
                      true, 4)) {
        return kFilterFailed;
    }
    BlendWithMask(cutout, picture, maskMat);
    SendMiddle();
    int32_t slot = 0;
    SetInputFrame(slot, first);
    SetInputFrame(slot, PictureRecord(cutout));
    UploadTimeAndLength(*engine, Time());
    UploadParams();
    return RenderTo(out);
}

}  // namespace kelmo
