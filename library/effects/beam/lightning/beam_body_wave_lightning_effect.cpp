// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/beam/lightning/beam_body_wave_lightning_effect.h"

#include <algorithm>
#include <cmath>
#include <opencv2/imgproc.hpp>
#include <utility>

#include "effects/beam/lightning/random_fraction.h"
#include "framework/filter/effect_registry.h"
#include "framework/filter/filter_guids.h"
#include "platform/random.h"

namespace kelmo {
namespace {

const bool kRegistered = RegisterEffect("NLEOpenGLBeamBodyWaveLightningEffect",
                                        MakeEffect<NLEOpenGLBeamBodyWaveLightningEffect>,
                                        {"5EF2D568-CD87-A23F-01CA-FCAEC369671E"});

constexpr double kInside = 20.0;
constexpr double kMarked = 250.0;
constexpr int kBorder = 5;
constexpr int32_t kPhaseSteps = 1000;
constexpr float kUsualSeconds = 2.0F;
constexpr int32_t kUsualCycle = 21;

}  // namespace

NLEOpenGLBeamBodyWaveLightningEffect::NLEOpenGLBeamBodyWaveLightningEffect(
    std::shared_ptr<NLEFilterInfo> filterInfo)
    : NLEOpenGLBeamEdgeFlowEffect(std::move(filterInfo), kBeamWaveGuid, kBeamEclosionGuid, true) {
    Srand(1);  // every film of a project has the same bars
    for (float& phase : phases) phase = (RandomFraction(kPhaseSteps) - 0.5F) * 2.0F;
}

void NLEOpenGLBeamBodyWaveLightningEffect::UpdateBeamProgress(NLEOpenGLBeamEffect* lines, bool,
                                                              int32_t cycle) {
    const float seconds = FloatOr("animation_duration", kUsualSeconds);
    const float done = seconds > 0.0F ? std::min(Time().position / seconds, 1.0F) : 1.0F;
    engine->SetUniformFloat("uProgress", done);
    const float turn = CycleOf(cycle);
    lines->SetProgress(turn, turn + 1.0F);
}

void NLEOpenGLBeamBodyWaveLightningEffect::FindBoxes(cv::Mat& picture) {
    boxes.clear();
    cv::threshold(picture, binary, kInside, kMarked, cv::THRESH_BINARY);
    if (IntOr("isMutiHuman", 0) != 1) {
        const cv::Rect box = cv::boundingRect(binary);
        if (!box.empty()) boxes.push_back(box);
        return;
    }
    cv::morphologyEx(binary, binary, cv::MORPH_CLOSE,
                     cv::getStructuringElement(cv::MORPH_RECT, {5, 5}));
    framed.create(binary.size(), CV_8UC1);
    framed.setTo(0);
    const cv::Rect inside(kBorder, kBorder, binary.cols - 2 * kBorder, binary.rows - 2 * kBorder);
    if (inside.width > 0 && inside.height > 0) binary(inside).copyTo(framed(inside));
    cv::findContours(framed, contours, cv::RETR_EXTERNAL, cv::CHAIN_APPROX_SIMPLE);
    for (const auto& contour : contours) boxes.push_back(cv::boundingRect(contour));
}

void NLEOpenGLBeamBodyWaveLightningEffect::CalMaskBeamParam(cv::Rect* result,
                                                            NLEOpenGLBeamEffect* lines,
                                                            cv::Mat* picture, bool, float) {
    *result = cv::Rect();
    FindBoxes(*picture);
    if (boxes.empty()) {
        ClearLines(*lines);
        return;
    }
    float ticks = 0.0F;
    int32_t cycle = kUsualCycle;
    if (FindFloat("duration", ticks) && std::isfinite(ticks)) {
        cycle = 1 + static_cast<int32_t>(std::clamp(ticks, 0.0F, 1e6F) * 1000.0F);
    }
    int32_t count = 0;
    for (const cv::Rect& box : boxes) {
        *result |= box;
        for (const CurveLine& bar : WaveBars(box, picture->size(), phases, CycleOf(cycle))) {
            lines->SetLine(bar, count++);
        }
    }
    lines->SetLineCount(count);
}

}  // namespace kelmo
