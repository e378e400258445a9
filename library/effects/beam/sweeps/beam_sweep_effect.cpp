// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/beam/sweeps/beam_sweep_effect.h"

#include <utility>

#include "framework/filter/filter_guids.h"
#include "framework/shared/working_size.h"
#include "framework/textures/material_binding.h"

namespace kelmo {
namespace {

constexpr const char* kEdgeNames[] = {"leftLine", "rightLine", "leftLine2", "rightLine2"};
constexpr int32_t kFewestFrames = 3;

}  // namespace

BeamSweepEffect::BeamSweepEffect(std::shared_ptr<NLEFilterInfo> filterInfo, const Paths& paths)
    : NLEOpenGLFilter(std::move(filterInfo)),
      beam(subFilters.AddAs<NLEOpenGLBeamEffect>(kBeamGuid)),
      eclosion(subFilters.AddAs<NLEOpenGLBeamEclosionEffect>(kBeamEclosionGuid)) {
    const auto found = paths.find(info->guid);
    if (found != paths.end()) path = found->second;
}

int32_t BeamSweepEffect::InitParams() {
    for (int i = 0; i < 2; ++i) engine->AddInputTexture(width, height, stride, true);
    for (const char* name : kEdgeNames) engine->AddUniformVec4(name, 0.0F, 0.0F, 0.0F, 0.0F);
    engine->AddUniformFloat("uViewSizeWidth", static_cast<float>(WorkingSize::Wide().width));
    engine->AddUniformFloat("uViewSizeHeight", static_cast<float>(WorkingSize::Wide().height));
    engine->AddUniformInt("startBlend", 0);
    glowBytes.Declare(*engine);
    return kFilterOk;
}

int32_t BeamSweepEffect::InitEffect() {
    subFilters.InitEffects();
    return NLEOpenGLFilter::InitEffect();
}

int32_t BeamSweepEffect::Resize(int32_t newWidth, int32_t newHeight, int32_t newStride) {
    subFilters.Resize(WorkingSize::For(newWidth, newHeight));
    return NLEOpenGLFilter::Resize(newWidth, newHeight, newStride);
}

void BeamSweepEffect::FillLines(const Sweep& sweep) {
    for (std::size_t i = 0; i < sweep.count; ++i) {
        const SweepLine& line = sweep.lines[i];
        beam->SetLine(CurveLine::Straight(line.from, line.to, 0.0F, 1.0F), static_cast<int32_t>(i));
    }
    if (sweep.count == 0) {
        constexpr float kClear[4] = {};
        beam->SetLine(CurveLine(), 0);
        beam->SetLineColor(kClear, 0);
    }
    beam->SetLineCount(sweep.count == 0 ? 1 : static_cast<int32_t>(sweep.count));
}

void BeamSweepEffect::SendEdges(const Sweep& sweep) {
    for (std::size_t i = 0; i < 2 * sweep.pairs; ++i) {
        const cv::Point2f from = sweep.edges[i].from * 0.5F + cv::Point2f(0.5F, 0.5F);
        const cv::Point2f to = sweep.edges[i].to * 0.5F + cv::Point2f(0.5F, 0.5F);
        engine->SetUniformVec4(kEdgeNames[i], from.x, from.y, to.x, to.y);
    }
    engine->SetUniformInt("startBlend", sweep.blend ? 1 : 0);
}

int32_t BeamSweepEffect::DoEffect(const FrameRecord& second, const FrameRecord& first,
                                  FrameRecord& out, int32_t frameWidth, int32_t frameHeight,
                                  int32_t) {
    if (!engine) return kFilterFailed;
    UploadParams();
    UploadGlobalTime(*engine, Time());
    engine->SetUniformInt("startBlend", 0);
    SendOwn();
    float radius = 0.0F;
    if (beam && FindFloat("uRadius", radius)) {
        beam->SetParam("uRadius", kParamFloat, NLEParamValue::Float(radius));
    }
    int32_t color = 0;
    if (FindInt("glowColor", color)) glowBytes.Set(*engine, color);
    int32_t slot = 0;
    SetInputFrame(slot, first);
    SetInputFrame(slot, second);
    if (beam && duration > kFewestFrames) {
        const WorkingSize size = WorkingSize::For(frameWidth, frameHeight);
        const float frames = PathFrames();
        const SweepPath current = frames > 0.0F ? path : SweepPath::kNone;
        const Sweep sweep = SweepAt(current, static_cast<float>(position), frames,
                                    cv::Size(size.width, size.height));
        FillLines(sweep);
        SendEdges(sweep);
        // A line that is straight needs one step.
        beam->SetParam("uPointCount", kParamInt, NLEParamValue::Int(1));
        beam->SetProgress(0.0F, 1.0F);
        RunSubFilter(*beam, *this, second, first, size);
        const FrameRecord lines = beam->GetTargetFrame(0);
        BindStageResult(*engine, slot, lines, size);
        if (eclosion) {
            eclosion->SetParam("uViewSizeWidth", kParamFloat,
                               NLEParamValue::Float(static_cast<float>(size.width)));
            eclosion->SetParam("uViewSizeHeight", kParamFloat,
                               NLEParamValue::Float(static_cast<float>(size.height)));
            eclosion->inputOverride = TextureReference(lines);
            BindStageResult(*engine, slot, RunSubFilter(*eclosion, *this, second, first, size),
                            size);
        }
    }
    BindFirstMaterial(*engine, slot, textureFrames.get());
    return RenderTo(out);
}

}  // namespace kelmo
