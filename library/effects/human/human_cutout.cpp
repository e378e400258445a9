// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/human/human_cutout.h"

#include <utility>

#include "effects/human/mask_stage.h"
#include "framework/filter/effect_registry.h"

namespace kelmo {
namespace {

const bool kRegistered =
    RegisterEffect("NLEOpenGLHumanCutout", MakeEffect<NLEOpenGLHumanCutout>,
                   {"485E9E3C-2424-40D3-8DB0-39D0C1120B23", "6D15EA28-D52A-4021-BF43-678A2AA369FB",
                    "A49C6C9D-551C-40B6-8E5B-9CDE310270F3", "3B5CCB74-D6E2-48AA-9743-E94F65FE5086",
                    "2F8A23F6-E7DF-4840-944C-4A3B4B1C50E2"});

}  // namespace

NLEOpenGLHumanCutout::NLEOpenGLHumanCutout(std::shared_ptr<NLEFilterInfo> filterInfo)
    : NLEOpenGLCombineFilter(std::move(filterInfo)) {
    needCpuFrame = 1;
}

int32_t NLEOpenGLHumanCutout::InitParams() {
    engine->AddUniformFloat("midHuman", midHuman);
    engine->AddInputTexture(width, height, stride, true);
    return kFilterOk;
}

int32_t NLEOpenGLHumanCutout::DoEffect(const FrameRecord&, const FrameRecord& first,
                                       FrameRecord& out, int32_t, int32_t, int32_t) {
    if (!engine) return kFilterFailed;
    const cv::Size size = MaskStageSize(first.width, first.height, IntOr(kDownsampleParam, 1));
    FrameRecord mask;
    if (!GetHumanMask(mask, aiHandle.Get(), maskMat, first, true, true, &size, false, 4)) {
        return kFilterFailed;
    }
    int32_t slot = 0;
    SetInputFrame(slot, first);
    SetInputFrame(slot, mask);
    UploadTimeAndLength(*engine, Time());
    UploadParams();
    return RenderTo(out);
}

}  // namespace kelmo
