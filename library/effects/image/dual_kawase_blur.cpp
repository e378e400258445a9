// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/image/dual_kawase_blur.h"

#include <algorithm>

#include "framework/filter/effect_registry.h"
#include "framework/filter/filter_guids.h"

namespace kelmo {
namespace {

const bool kRegistered = RegisterEffect("NLEOpenGLDualKawaseBlur",
                                        MakeEffect<NLEOpenGLDualKawaseBlur>, {kDualKawaseBlurGuid});

enum Layer : int32_t { kDown = 0, kUp = 1, kCopy = 2 };

}  // namespace

NLEOpenGLDualKawaseBlur::NLEOpenGLDualKawaseBlur(std::shared_ptr<NLEFilterInfo> filterInfo)
    : NLEOpenGLFilter(std::move(filterInfo)) {}

int32_t NLEOpenGLDualKawaseBlur::InitParams() {
    engine->AddRenderTarget();
    engine->AddUniformInt("curIteration", 0);
    engine->AddUniformInt("calLayer", kDown);
    return kFilterOk;
}

void NLEOpenGLDualKawaseBlur::BindInput(const FrameRecord& first, int32_t frameWidth,
                                        int32_t frameHeight, int32_t frameStride) {
    int32_t slot = 0;
    if (rendered) {
        engine->SetInputTexture(slot, GetTargetFrame(0), frameWidth, frameHeight, frameStride);
    } else if (inputOverride.InForce()) {
        engine->SetInputTexture(slot, inputOverride.Record(frameWidth, frameHeight, frameStride),
                                frameWidth, frameHeight, frameStride);
    } else {
        SetInputFrame(slot, first);
    }
}

int32_t NLEOpenGLDualKawaseBlur::DoEffect(const FrameRecord&, const FrameRecord& first,
                                          FrameRecord& out, int32_t frameWidth, int32_t frameHeight,
                                          int32_t frameStride) {
    if (!engine) return kFilterFailed;
    UploadParams();
    const int32_t iterations = std::min(IntOr("uIterations", 0), kMostIterations);
    rendered = false;
    if (iterations < 1) {
        BindInput(first, frameWidth, frameHeight, frameStride);
        engine->SetUniformInt("calLayer", kCopy);
        return RenderTo(out);
    }
    const int32_t last = 2 * iterations - 1;
    for (int32_t pass = 0; pass <= last; ++pass) {
        const bool down = pass < iterations;
        BindInput(first, frameWidth, frameHeight, frameStride);
        engine->SetUniformInt("calLayer", down ? kDown : kUp);
        engine->SetUniformInt("curIteration", down ? pass : pass - iterations);
        if (pass == last) return RenderTo(out);
        FrameRecord kept = FrameRecord::TargetLess(frameWidth, frameHeight, frameStride);
        if (RenderTo(kept) != kFilterOk) return kFilterFailed;
        engine->SetRenderTarget(0);
        rendered = true;
    }
    return kFilterOk;
}

}  // namespace kelmo
