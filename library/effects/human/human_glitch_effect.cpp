// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/human/human_glitch_effect.h"

#include <algorithm>
#include <utility>

#include "framework/filter/effect_registry.h"

namespace kelmo {
namespace {

const bool kGlitchRegistered =
    RegisterEffect("NLEOpenGLHumanGlitchEffect", MakeEffect<NLEOpenGLHumanGlitchEffect>,
                   {"BAFB0B38-BD3E-45EE-B369-8939FE33087A"});
const bool kPixelsRegistered =
    RegisterEffect("NLEOpenGLHumanPixlateEffect", MakeEffect<NLEOpenGLHumanPixlateEffect>,
                   {"E080807D-C5B9-472B-93B3-A0E79D4C4458"});

constexpr std::size_t kShaderParams = 2;
/// The AI filter's parameters, from place kShaderParams on.
constexpr const char* kEdgeParams[] = {"Edge Thickness", "Edge Feather"};

}  // namespace

NLEOpenGLHumanGlitchEffect::NLEOpenGLHumanGlitchEffect(std::shared_ptr<NLEFilterInfo> filterInfo)
    : NLEOpenGLCombineFilter(std::move(filterInfo)) {
    needCpuFrame = 1;
}

int32_t NLEOpenGLHumanGlitchEffect::InitParams() {
    engine->AddInputTexture(width, height, stride, true);
    return kFilterOk;
}

void NLEOpenGLHumanGlitchEffect::SendEdge() const {
    std::size_t place = kShaderParams;
    for (const char* name : kEdgeParams) {
        if (place >= params.size()) return;
        aiHandle.SetFloat(name, CurrentNumber(*params[place++]));
    }
}

int32_t NLEOpenGLHumanGlitchEffect::DoEffect(const FrameRecord&, const FrameRecord& first,
                                             FrameRecord& out, int32_t, int32_t, int32_t) {
    if (!engine) return kFilterFailed;
    SendEdge();
    FrameRecord mask;
    if (!GetHumanMask(mask, aiHandle.Get(), maskMat, first, false, false, nullptr, false, 4)) {
        return kFilterFailed;
    }
    int32_t slot = 0;
    SetInputFrame(slot, first);
    SetInputFrame(slot, mask);
    UploadTimeAndLength(*engine, Time());
    for (std::size_t i = 0; i < std::min(params.size(), kShaderParams); ++i) {
        UploadParam(*engine, *params[i]);
    }
    return RenderTo(out);
}

}  // namespace kelmo
