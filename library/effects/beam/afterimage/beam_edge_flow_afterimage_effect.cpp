// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/beam/afterimage/beam_edge_flow_afterimage_effect.h"

#include <cstdlib>
#include <utility>

#include "effects/beam/random_color.h"
#include "framework/filter/effect_registry.h"
#include "framework/filter/filter_guids.h"

namespace kelmo {
namespace {

std::unique_ptr<NLEOpenGLFilter> MakeAfterimage(std::shared_ptr<NLEFilterInfo> info,
                                                const char* subGuid) {
    return std::make_unique<NLEOpenGLBeamEdgeFlowAfterimageEffect>(
        std::move(info), subGuid ? subGuid : kEdgeFlowLookGuid);
}

const bool kRegistered = RegisterEffect(
    "NLEOpenGLBeamEdgeFlowAfterimageEffect", MakeAfterimage,
    {"BeamEdgeFlowAfterimage", "D1A0ED4B-E2D0-816C-63D7-A2D5D82B412A",
     "4F2899A7-3478-6DB2-21A5-06008A34E478", "34AA48FB-4B88-8341-2371-83B36053D97E"});

constexpr int32_t kJumpTicks = 6;
constexpr int32_t kWhite = 0xFFFFFF;
constexpr int32_t kEachFrame = 1;  // of "randomColor"

}  // namespace

NLEOpenGLBeamEdgeFlowAfterimageEffect::NLEOpenGLBeamEdgeFlowAfterimageEffect(
    std::shared_ptr<NLEFilterInfo> filterInfo, const char* edgeFlowGuid)
    : NLEOpenGLCombineFilter(std::move(filterInfo)),
      edgeFlow(stages.AddAs<NLEOpenGLBeamEdgeFlowEffect>(edgeFlowGuid)),
      trail(kJumpTicks) {
    if (edgeFlow) edgeFlow->SetShowSrc(false);
    needCpuFrame = 1;
}

int32_t NLEOpenGLBeamEdgeFlowAfterimageEffect::InitParams() {
    constexpr int32_t kPicturesBesideTheClip = 4;
    for (int32_t i = 0; i < kPicturesBesideTheClip; ++i) {
        engine->AddInputTexture(width, height, stride, true);
    }
    for (int32_t i = 0; i < 2; ++i) engine->AddRenderTarget();
    engine->AddUniformInt("uAccumBG", 1);
    engine->AddUniformInt("uAccum", 0);
    engine->AddUniformFloat("uTicks", 1.0F);
    color.Declare(*engine);
    trail.Forget();
    return kFilterOk;
}

int32_t NLEOpenGLBeamEdgeFlowAfterimageEffect::InitEffect() {
    stages.InitEffects();
    return NLEOpenGLCombineFilter::InitEffect();
}

int32_t NLEOpenGLBeamEdgeFlowAfterimageEffect::Resize(int32_t newWidth, int32_t newHeight,
                                                      int32_t newStride) {
    stages.Resize(newWidth, newHeight, newStride);
    return NLEOpenGLCombineFilter::Resize(newWidth, newHeight, newStride);
}

int32_t NLEOpenGLBeamEdgeFlowAfterimageEffect::Tick() const {
    // In doubles, and a little late: at 25 frames a second every frame is a tick of its own.
    return static_cast<int32_t>(position * double{kTicksPerSecond} / GetFrameRate() + 1e-6);
}

void NLEOpenGLBeamEdgeFlowAfterimageEffect::SendColor() {
    // The edge flow has seeded the random numbers with the frame.
    const int32_t rgb =
        IntOr("randomColor", 0) == kEachFrame ? DrawRandomColor() : IntOr("color", kWhite);
    engine->SetUniformInt("color", rgb);
    color.Set(*engine, rgb);
}

void NLEOpenGLBeamEdgeFlowAfterimageEffect::BindTarget(int32_t slot, int32_t index,
                                                       int32_t frameWidth, int32_t frameHeight,
                                                       int32_t frameStride) {
    engine->SetInputTexture(slot, GetTargetFrame(index), frameWidth, frameHeight, frameStride);
}

bool NLEOpenGLBeamEdgeFlowAfterimageEffect::DrawTrail(int32_t slot, int32_t index, bool restart,
                                                      int32_t frameWidth, int32_t frameHeight,
                                                      int32_t frameStride) {
    if (restart) {
        engine->SetInputImage(slot, resetFrame.data, resetFrame.cols, resetFrame.rows,
                              static_cast<int32_t>(resetFrame.step[0]), 4, false, 0);
    } else {
        BindTarget(slot, index, frameWidth, frameHeight, frameStride);
    }
    FrameRecord kept = FrameRecord::TargetLess(frameWidth, frameHeight, frameStride);
    if (RenderTo(kept) != kFilterOk) return false;
    engine->SetRenderTarget(index);
    return true;
}

int32_t NLEOpenGLBeamEdgeFlowAfterimageEffect::DoEffect(const FrameRecord& second,
                                                        const FrameRecord& first, FrameRecord& out,
                                                        int32_t frameWidth, int32_t frameHeight,
                                                        int32_t frameStride) {
    if (!engine || !edgeFlow) return kFilterFailed;
    UploadParams();
    UploadGlobalTime(*engine, Time());
    int32_t slot = 0;
    SetInputFrame(slot, first);
    SetInputFrame(slot, second);
    HandOverParams(params, *edgeFlow);
    const FrameRecord light =
        RunSubFilter(*edgeFlow, *this, second, first, frameWidth, frameHeight, frameStride);
    engine->SetInputTexture(slot++, light, frameWidth, frameHeight, frameStride);
    engine->SetUniformInt("uAccumBG", accumFrames);
    SendColor();

    const bool mirrored = IntOr("mirror", 0) == 1;
    const int32_t tick = Tick();
    const bool restart = trail.Restarts(tick, SizeChanged());
    // The very first tick is drawn as often as it is asked for.
    if (restart || trail.Last() == 0 || trail.Last() != tick) {
        accumFrames = restart ? 0 : accumFrames + 1;
        engine->SetUniformInt("uAccum", 1);
        engine->SetUniformFloat("uTicks",
                                restart ? 1.0F : static_cast<float>(std::abs(tick - trail.Last())));
        if (!DrawTrail(slot, 0, restart, frameWidth, frameHeight, frameStride)) {
            return kFilterFailed;
        }
        if (mirrored) {
            engine->SetUniformFloat("motion_x", -FloatOr("motion_x", 0.0F));
            if (!DrawTrail(slot, 1, restart, frameWidth, frameHeight, frameStride)) {
                return kFilterFailed;
            }
        }
    }
    engine->SetUniformInt("uAccum", 0);
    for (int32_t i = 0; i < (mirrored ? 2 : 1); ++i) {
        BindTarget(slot++, i, frameWidth, frameHeight, frameStride);
    }
    SetInputFrame(slot, edgeFlow->GetMaskFrame());
    if (RenderTo(out) != kFilterOk) return kFilterFailed;
    trail.Keep(tick);
    return kFilterOk;
}

}  // namespace kelmo
