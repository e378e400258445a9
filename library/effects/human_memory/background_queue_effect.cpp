// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/human_memory/background_queue_effect.h"

#include <opencv2/imgproc.hpp>
#include <utility>

#include "framework/filter/effect_registry.h"
#include "framework/filter/filter_guids.h"
#include "framework/shared/picture_record.h"
#include "framework/shared/working_size.h"
#include "framework/textures/material_binding.h"

namespace kelmo {
namespace {

const bool kRegistered =
    RegisterEffect("NLEOpenGLBackGroundQueueEffect", MakeEffect<NLEOpenGLBackGroundQueueEffect>,
                   {"BackGroundQueue", "61F4CBAE-FFCB-69F7-7AED-F9A16EEA6422"});

}  // namespace

NLEOpenGLBackGroundQueueEffect::NLEOpenGLBackGroundQueueEffect(
    std::shared_ptr<NLEFilterInfo> filterInfo)
    : NLEOpenGLFilter(std::move(filterInfo)),
      queueFilter(stages.AddAs<NLEOpenGLBackGroundQueueAccumEffect>(kBackGroundQueueAccumGuid)) {
    needCpuFrame = 1;
}

int32_t NLEOpenGLBackGroundQueueEffect::InitEffect() {
    stages.InitEffects();
    return NLEOpenGLFilter::InitEffect();
}

int32_t NLEOpenGLBackGroundQueueEffect::Resize(int32_t newWidth, int32_t newHeight,
                                               int32_t newStride) {
    stages.Resize(WorkingSize::For(newWidth, newHeight));
    return NLEOpenGLFilter::Resize(newWidth, newHeight, newStride);
}

void NLEOpenGLBackGroundQueueEffect::HandOverNumbers() {
    for (const auto& param : params) {
        const int32_t type = CurrentType(*param);
        if (type == kParamDouble || type == kParamFloat || type == kParamInt) {
            queueFilter->SetParam(param->name.c_str(), type, param->value);
        }
    }
}

int32_t NLEOpenGLBackGroundQueueEffect::DoEffect(const FrameRecord& second,
                                                 const FrameRecord& first, FrameRecord& out,
                                                 int32_t frameWidth, int32_t frameHeight,
                                                 int32_t frameStride) {
    if (!engine || !queueFilter) return kFilterFailed;
    UploadParams();
    HandOverNumbers();
    cv::Mat picture;
    GetMat(picture, first);
    if (picture.empty()) return kFilterFailed;
    const WorkingSize size = WorkingSize::For(picture.cols, picture.rows);
    cv::resize(picture, small, {size.width, size.height}, 0.0, 0.0, cv::INTER_LINEAR);
    queueFilter->SetPosition(position);
    queueFilter->SetDuration(duration);
    FrameRecord inside = FrameRecord::TargetLess(frameWidth, frameHeight, frameStride);
    queueFilter->DoEffect(second, PictureRecord(small), inside, size.width, size.height,
                          frameStride);
    int32_t slot = 0;
    SetInputFrame(slot, first);
    SetInputFrame(slot, PictureRecord(queueFilter->Mask()));
    BindFirstMaterial(*engine, slot, textureFrames.get());
    for (int32_t i = 0; i < NLEOpenGLBackGroundQueueAccumEffect::kPictures; ++i) {
        BindStageResult(*engine, slot, queueFilter->GetTargetFrame(i), size);
    }
    return RenderTo(out);
}

}  // namespace kelmo
