// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/transition/twill02_transition.h"

#include "effects/transition/clip_measure.h"
#include "framework/filter/effect_registry.h"

namespace kelmo {
namespace {

const bool kRegistered =
    RegisterEffect("NLEOpenGLTwill02Transition", MakeEffect<NLEOpenGLTwill02Transition>,
                   {"348A2924-3423-4F00-A56E-E8154FAC95C5"});

}  // namespace

NLEOpenGLTwill02Transition::NLEOpenGLTwill02Transition(std::shared_ptr<NLEFilterInfo> filterInfo)
    : NLEOpenGLFilter(std::move(filterInfo)) {}

int32_t NLEOpenGLTwill02Transition::DoEffect(const FrameRecord& second, const FrameRecord& first,
                                             FrameRecord& out, int32_t frameWidth, int32_t,
                                             int32_t) {
    if (!engine) return kFilterFailed;
    UploadGlobalTime(*engine, Time());
    UploadParams();
    int32_t slot = 0;
    SetInputFrame(slot, first);
    SetInputFrame(slot, second);
    const bool early = duration <= 0 || 2 * static_cast<int64_t>(position) < duration;
    const FrameRecord& scanned = early ? first : second;
    // Only pixels that are there already: a clip on the GPU is opaque for this effect.
    cv::Mat picture;
    if (scanned.pixels) GetMat(picture, scanned);
    const OpaqueBand band = MeasureOpaqueBand(picture, frameWidth);
    const float w = frameWidth > 0 ? static_cast<float>(frameWidth) : 1.0F;
    engine->SetUniformFloat("edgeLeft", static_cast<float>(band.left) / w);
    engine->SetUniformFloat("edgeRight", static_cast<float>(band.right) / w);
    return RenderTo(out);
}

}  // namespace kelmo
