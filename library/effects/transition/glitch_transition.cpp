// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/transition/glitch_transition.h"

#include "framework/filter/effect_registry.h"

namespace kelmo {
namespace {

constexpr const char* kFirstClipGuid = "BF8C1132-B7E8-4279-90A9-0A45FB8E5573";

const bool kRegistered =
    RegisterEffect("NLEOpenGLGlitchTransition", MakeEffect<NLEOpenGLGlitchTransition>,
                   {"A0E5D13F-BB74-4BF6-8CBD-06BEE7B7D0CD", kFirstClipGuid});

}  // namespace

NLEOpenGLGlitchTransition::NLEOpenGLGlitchTransition(std::shared_ptr<NLEFilterInfo> filterInfo)
    : NLEOpenGLFilter(std::move(filterInfo)), alwaysFirst(info->guid == kFirstClipGuid) {
    needCpuFrame = 1;
}

int32_t NLEOpenGLGlitchTransition::DoEffect(const FrameRecord& second, const FrameRecord& first,
                                            FrameRecord& out, int32_t, int32_t, int32_t) {
    if (!engine) return kFilterFailed;
    int32_t slot = 0;
    SetInputFrame(slot, first);
    SetInputFrame(slot, second);
    UploadTimeAndLength(*engine, Time());
    UploadParams();
    const bool late = duration > 0 && 2 * static_cast<int64_t>(position) > duration;
    cv::Mat picture;
    GetMat(picture, !alwaysFirst && late ? second : first);
    if (MeasureGrayRange(picture, gray, range)) {
        engine->SetUniformFloat("minGray", range.low);
        engine->SetUniformFloat("maxGray", range.high);
    }
    return RenderTo(out);
}

}  // namespace kelmo
