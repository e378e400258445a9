// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/beam/traced/beam_text_effect.h"

#include <algorithm>
#include <opencv2/imgproc.hpp>
#include <utility>

#include "framework/filter/effect_registry.h"
#include "framework/filter/filter_guids.h"
#include "framework/shared/working_size.h"
#include "platform/random.h"

namespace kelmo {
namespace {

const bool kRegistered =
    RegisterEffect("NLEOpenGLBeamTextEffect", MakeEffect<NLEOpenGLBeamTextEffect>,
                   {"929B4DB0-E433-8A28-7C9C-D5AC9343786C"});

constexpr double kInside = 20.0;
constexpr double kMarked = 250.0;
constexpr float kUsualSeconds = 2.0F;
constexpr int32_t kPhaseSteps = 1000;

}  // namespace

NLEOpenGLBeamTextEffect::NLEOpenGLBeamTextEffect(std::shared_ptr<NLEFilterInfo> filterInfo)
    : NLEOpenGLBeamEdgeFlowEffect(std::move(filterInfo), kBeamGuid, kBeamEclosionGuid, false),
      textEclosion(textFeathers.AddAs<NLEOpenGLBeamEclosionEffect>(kBeamEclosionGuid)) {
    Srand(1);  // every film of a project has the same arcs
    for (float& phase : phases) {
        phase = (static_cast<float>(Rand() % kPhaseSteps) / kPhaseSteps - 0.5F) * 2.0F;
    }
}

int32_t NLEOpenGLBeamTextEffect::InitEffect() {
    textFeathers.InitEffects();
    return NLEOpenGLBeamEdgeFlowEffect::InitEffect();
}

int32_t NLEOpenGLBeamTextEffect::Resize(int32_t newWidth, int32_t newHeight, int32_t newStride) {
    textFeathers.Resize(WorkingSize::For(newWidth, newHeight));
    return NLEOpenGLBeamEdgeFlowEffect::Resize(newWidth, newHeight, newStride);
}

void NLEOpenGLBeamTextEffect::CalMaskBeamParam(cv::Rect* result, NLEOpenGLBeamEffect* lines,
                                               cv::Mat* picture, bool, float) {
    cv::threshold(*picture, binary, kInside, kMarked, cv::THRESH_BINARY);
    *result = cv::boundingRect(binary);
    SendFeather(*result, binary.size());
    if (result->empty()) {
        ClearLines(*lines);
        return;
    }
    int32_t count = 0;
    for (const CurveLine& arc : TextArcs(*result, binary.size(), phases)) {
        lines->SetLine(arc, count++);
    }
    lines->SetLineCount(count);
}

void NLEOpenGLBeamTextEffect::SendFeather(const cv::Rect& box, const cv::Size& size) {
    int32_t radius = 0;
    if (!textEclosion || !FindInt("uEclosion", radius)) return;
    textEclosion->SetParam("uEclosion", kParamInt, NLEParamValue::Int(radius));
    const auto margin = static_cast<float>(radius / 2 + 1);
    const auto columns = static_cast<float>(size.width);
    const auto rows = static_cast<float>(size.height);
    const struct {
        const char* name;
        float value;
    } values[] = {
        {"uBoundLeftX", (static_cast<float>(box.x) - margin) / columns},
        {"uBoundLeftY", (static_cast<float>(box.y) - margin) / rows},
        {"uBoundRightX", (static_cast<float>(box.br().x) + margin) / columns},
        {"uBoundRightY", (static_cast<float>(box.br().y) + margin) / rows},
        {"uViewSizeWidth", columns},
        {"uViewSizeHeight", rows},
    };
    for (const auto& v : values) {
        textEclosion->SetParam(v.name, kParamFloat, NLEParamValue::Float(v.value));
    }
}

void NLEOpenGLBeamTextEffect::UpdateBeamProgress(NLEOpenGLBeamEffect* lines, bool loop,
                                                 int32_t cycle) {
    if (!loop) {
        const float seconds = FloatOr("animation_duration", kUsualSeconds);
        const float done = seconds > 0.0F ? std::min(Time().position / seconds, 1.0F) : 1.0F;
        engine->SetUniformFloat("uProgress", done);
    }
    const float turn = CycleOf(cycle);
    lines->SetProgress(turn, turn + 1.0F);
}

void NLEOpenGLBeamTextEffect::PrepareDraw(int32_t textureUnit, const FrameRecord& source,
                                          int32_t frameWidth, int32_t frameHeight,
                                          int32_t frameStride) {
    if (!textEclosion) return;
    engine->SetInputTexture(textureUnit,
                            RunSubFilter(*textEclosion, *this, FrameRecord(), source, frameWidth,
                                         frameHeight, frameStride),
                            frameWidth, frameHeight, frameStride);
}

}  // namespace kelmo
