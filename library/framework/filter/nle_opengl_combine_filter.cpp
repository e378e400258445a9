// SPDX-License-Identifier: GPL-3.0-or-later
#include "framework/filter/nle_opengl_combine_filter.h"

#include <cstring>
#include <opencv2/imgproc.hpp>
#include <utility>

#include "bindings/ai_effect_lib.h"
#include "framework/shared/picture_record.h"

namespace kelmo {

namespace {

AIImage ImageOf(const cv::Mat& picture) {
    return {picture.data, picture.cols, picture.rows, static_cast<int32_t>(picture.step)};
}

/// A view is somebody else's memory, perhaps gone since the frame before: never written to.
void DropView(cv::Mat& picture) {
    if (!picture.u) picture.release();
}

/// The AI library writes into this; a picture that fits keeps its content.
void EnsurePicture(cv::Mat& picture, const cv::Size& size) {
    DropView(picture);
    if (picture.size() != size || picture.type() != CV_8UC4) {
        picture = cv::Mat::zeros(size, CV_8UC4);
    }
}

}  // namespace

NLEOpenGLCombineFilter::NLEOpenGLCombineFilter(std::shared_ptr<NLEFilterInfo> filterInfo)
    : NLEOpenGLFilter(std::move(filterInfo)), maskBuffer(cv::Mat::zeros(2, 2, CV_8UC4)) {}

NLEOpenGLCombineFilter::~NLEOpenGLCombineFilter() = default;

int32_t NLEOpenGLCombineFilter::SetParam(const char* name, int32_t type, NLEParamValue value) {
    if (std::strcmp(name, kAiTransferParam) == 0) {
        if (type != kParamPointer) return kFilterRefusedType;
        aiTransfer = static_cast<ObjectAiDataTransfer*>(value.AsPointer());
    }
    return NLEOpenGLFilter::SetParam(name, type, std::move(value));
}

bool NLEOpenGLCombineFilter::GetHumanMask(FrameRecord& maskOut, void* aiHandle, cv::Mat& maskMat,
                                          const FrameRecord& input, bool resizeTransferMask,
                                          bool resizeInput, const cv::Size* targetSize,
                                          bool wantMat, int channels) {
    const cv::Size* const scaleTo = targetSize && !targetSize->empty() ? targetSize : nullptr;
    FrameRecord host;
    if (aiTransfer &&
        aiTransfer->GetMaskImage(&host.pixels, &host.width, &host.height, &host.stride)) {
        cv::Mat hostMask;
        GetMat(hostMask, host);
        if (!hostMask.empty()) {
            UseTransferMask(maskOut, hostMask, resizeTransferMask ? scaleTo : nullptr, channels);
            if (wantMat) GetMat(maskMat, maskOut);
            return true;
        }
    }
    return UseFilterMask(maskOut, aiHandle, maskMat, input, resizeInput ? scaleTo : nullptr,
                         channels);
}

void NLEOpenGLCombineFilter::UseTransferMask(FrameRecord& maskOut, const cv::Mat& hostMask,
                                             const cv::Size* scaleTo, int channels) {
    const bool grey = channels == 1;
    if (scaleTo) {
        cv::Mat& scaled = grey ? scaledMask : maskBuffer;
        cv::resize(hostMask, scaled, *scaleTo, 0.0, 0.0, cv::INTER_LINEAR);
    }
    if (grey) cv::cvtColor(scaleTo ? scaledMask : hostMask, maskBuffer, cv::COLOR_RGBA2GRAY);
    maskOut = PictureRecord(grey || scaleTo ? maskBuffer : hostMask);
}

bool NLEOpenGLCombineFilter::UseFilterMask(FrameRecord& maskOut, void* aiHandle, cv::Mat& maskMat,
                                           const FrameRecord& input, const cv::Size* scaleTo,
                                           int channels) {
    cv::Mat picture;
    GetMat(picture, input);
    if (picture.empty()) return false;
    if (scaleTo && *scaleTo != picture.size()) {
        cv::resize(picture, scaledInput, *scaleTo, 0.0, 0.0, cv::INTER_LINEAR);
        picture = scaledInput;
    }
    const bool grey = channels == 1;
    cv::Mat& mask = grey ? maskBuffer : maskMat;
    EnsurePicture(mask, picture.size());
    AIEffectLib().transform(aiHandle, ImageOf(mask), AIImage(), ImageOf(picture));
    if (grey) {
        DropView(maskMat);
        cv::cvtColor(maskBuffer, maskMat, cv::COLOR_RGBA2GRAY);
    }
    maskOut = PictureRecord(maskMat);
    return true;
}

}  // namespace kelmo
