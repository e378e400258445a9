// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/beam/tracked/beam_accum_effect.h"

#include <algorithm>
#include <cstdlib>
#include <opencv2/imgproc.hpp>
#include <utility>

#include "framework/filter/effect_registry.h"
#include "framework/filter/filter_guids.h"

namespace kelmo {
namespace {

const bool kRegistered = RegisterEffect("NLEOpenGLBeamAccumEffect",
                                        MakeEffect<NLEOpenGLBeamAccumEffect>, {kBeamAccumGuid});

constexpr double kInside = 100.0;
constexpr float kUsualBlend = 7.5F;
constexpr float kUsualSegment = 4.8F;  // thousandths

}  // namespace

NLEOpenGLBeamAccumEffect::NLEOpenGLBeamAccumEffect(std::shared_ptr<NLEFilterInfo> filterInfo)
    : NLEOpenGLCombineFilter(std::move(filterInfo)),
      beam(stages.AddAs<NLEOpenGLBeamEffect>(kBeamGuid)),
      resetFrame(cv::Mat::zeros(4, 4, CV_8UC4)) {
    needCpuFrame = 1;
}

int32_t NLEOpenGLBeamAccumEffect::InitEffect() {
    stages.InitEffects();
    return NLEOpenGLCombineFilter::InitEffect();
}

int32_t NLEOpenGLBeamAccumEffect::Resize(int32_t newWidth, int32_t newHeight, int32_t newStride) {
    stages.Resize(WorkingSize::For(newWidth, newHeight));
    return NLEOpenGLCombineFilter::Resize(newWidth, newHeight, newStride);
}

int32_t NLEOpenGLBeamAccumEffect::InitParams() {
    engine->AddRenderTarget();
    engine->AddInputTexture(width, height, stride, true);
    trail.Forget();
    return kFilterOk;
}

bool NLEOpenGLBeamAccumEffect::MakeLines(const FrameRecord& first, const cv::Size& size) {
    FrameRecord mask;
    if (!GetHumanMask(mask, segmentation.Get(), maskMat, first, true, true, &size, true, 1)) {
        return false;
    }
    cv::threshold(maskMat, binary, kInside, 250.0, cv::THRESH_BINARY);
    cv::findContours(binary, contours, cv::RETR_CCOMP, cv::CHAIN_APPROX_SIMPLE);
    int32_t count = 0;
    const auto longest =
        std::max_element(contours.begin(), contours.end(),
                         [](const auto& a, const auto& b) { return a.size() < b.size(); });
    if (longest != contours.end()) {
        std::reverse(longest->begin(), longest->end());
        converter.Convert(*longest, size, FloatOr("segment", kUsualSegment) / 1000.0F, false, true,
                          [&](const CurveLine& line) { beam->SetLine(line, count++); });
    }
    beam->SetLineCount(count);
    return true;
}

int32_t NLEOpenGLBeamAccumEffect::DoEffect(const FrameRecord&, const FrameRecord& first,
                                           FrameRecord& out, int32_t frameWidth,
                                           int32_t frameHeight, int32_t frameStride) {
    if (!engine || !beam) return kFilterFailed;
    const WorkingSize size = WorkingSize::For(frameWidth, frameHeight);
    if (!MakeLines(first, {size.width, size.height})) return kFilterFailed;
    UploadParams();
    engine->SetUniformFloat("uBlend", FloatOr("uBlend", kUsualBlend));
    UploadGlobalTime(*engine, Time());
    float radius = 0.0F;
    if (FindFloat("uRadius", radius)) {
        beam->SetParam("uRadius", kParamFloat, NLEParamValue::Float(radius));
    }
    beam->SetProgress(0.0F, 1.0F);
    int32_t slot = 0;
    BindStageResult(*engine, slot, RunSubFilter(*beam, *this, {}, first, size), size);
    const bool restarts = trail.Restarts(position, SizeChanged());
    const int32_t steps = restarts ? 1 : std::abs(position - trail.Last());
    engine->SetUniformFloat("elapsed", static_cast<float>(steps) / std::max(GetFrameRate(), 1.0F));
    if (restarts) {
        engine->SetInputImage(slot, resetFrame.data, resetFrame.cols, resetFrame.rows,
                              static_cast<int32_t>(resetFrame.step), 4, false, 0);
    } else {
        engine->SetInputTexture(slot, GetTargetFrame(0), frameWidth, frameHeight, frameStride);
    }
    if (RenderTo(out) != kFilterOk) return kFilterFailed;
    engine->SetRenderTarget(0);
    trail.Keep(position);
    return kFilterOk;
}

}  // namespace kelmo
