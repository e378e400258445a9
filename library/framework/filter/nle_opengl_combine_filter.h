// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <opencv2/core.hpp>

#include "contract/ai_transfer.h"
#include "framework/filter/nle_opengl_filter.h"

namespace kelmo {

/// Base of the effects that work with a person: keeps the host's object with AI results, and gets
/// a mask from it or, without it, from a filter of the AI library.
class NLEOpenGLCombineFilter : public NLEOpenGLFilter {
public:
    explicit NLEOpenGLCombineFilter(std::shared_ptr<NLEFilterInfo> filterInfo);
    ~NLEOpenGLCombineFilter() override;

    /// Takes "ObjectAiDataTransferPtr" on its way to the base: 4, and nothing stored, when that is
    /// no pointer.
    int32_t SetParam(const char* name, int32_t type, NLEParamValue value) override;

    /// The person mask of the frame in `maskOut`; false when there is no picture to take it from.
    ///
    /// With a mask of the host: `maskOut` describes the host's own pixels (4 channels, valid for
    /// this frame alone), or a scaled copy when `resizeTransferMask` asks for `targetSize`, or a
    /// grey copy with `channels` 1. `wantMat` gives it in `maskMat`, too, as a view.
    /// Otherwise the AI filter behind `aiHandle` runs on `input`, scaled to `targetSize` when
    /// `resizeInput` is set; `maskMat` then holds the mask, 4 channels or grey, and `maskOut`
    /// describes it. Without an AI library that mask is all zero.
    ///
    /// `maskMat` is the caller's and should live as long as the effect, so that its memory is
    /// reused. A null `targetSize` means no scaling.
    virtual bool GetHumanMask(FrameRecord& maskOut, void* aiHandle, cv::Mat& maskMat,
                              const FrameRecord& input, bool resizeTransferMask, bool resizeInput,
                              const cv::Size* targetSize, bool wantMat, int channels);

    /// The host's object, or null; valid for the frame in which it came. Not owned.
    ObjectAiDataTransfer* GetAiTransfer() const { return aiTransfer; }

protected:
    ObjectAiDataTransfer* aiTransfer = nullptr;
    /// Scratch picture of `GetHumanMask`.
    cv::Mat maskBuffer;

private:
    void UseTransferMask(FrameRecord& maskOut, const cv::Mat& hostMask, const cv::Size* scaleTo,
                         int channels);
    bool UseFilterMask(FrameRecord& maskOut, void* aiHandle, cv::Mat& maskMat,
                       const FrameRecord& input, const cv::Size* scaleTo, int channels);

    /// Pictures between two steps of a mask, kept for their memory.
    cv::Mat scaledMask;
    cv::Mat scaledInput;
};

}  // namespace kelmo
