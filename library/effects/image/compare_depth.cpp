// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/image/compare_depth.h"

#include "framework/filter/effect_registry.h"

namespace kelmo {
namespace {

const bool kRegistered = RegisterEffect("NLEOpenGLCompareDepth", MakeEffect<NLEOpenGLCompareDepth>,
                                        {"602B6F19-AE6B-481D-936A-38308F0A1940"});

}  // namespace

NLEOpenGLCompareDepth::NLEOpenGLCompareDepth(std::shared_ptr<NLEFilterInfo> filterInfo)
    : NLEOpenGLFilter(std::move(filterInfo)) {}

int32_t NLEOpenGLCompareDepth::DoEffect(const FrameRecord& second, const FrameRecord& first,
                                        FrameRecord&, int32_t frameWidth, int32_t frameHeight,
                                        int32_t frameStride) {
    if (!engine) return kFilterFailed;
    UploadParams();
    int32_t slot = 0;
    SetInputFrame(slot, first);
    SetInputFrame(slot, second);
    SetInputFrame(slot, extraFrame);
    FrameRecord pass = FrameRecord::TargetLess(frameWidth, frameHeight, frameStride);
    return RenderTo(pass);
}

}  // namespace kelmo
