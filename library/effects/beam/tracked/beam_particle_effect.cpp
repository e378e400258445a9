// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/beam/tracked/beam_particle_effect.h"

#include <algorithm>
#include <cmath>
#include <opencv2/imgproc.hpp>
#include <utility>

#include "effects/beam/lines/contour_to_lines.h"
#include "framework/filter/effect_registry.h"
#include "framework/filter/filter_guids.h"
#include "framework/shared/working_size.h"

namespace kelmo {
namespace {

const bool kConvergeRegistered =
    RegisterEffect("NLEOpenGLBeamParticleConverge", MakeEffect<NLEOpenGLBeamParticleConverge>,
                   {"2F296153-AE78-4492-B906-7F0746CBBA2E"});
const bool kDissipateRegistered =
    RegisterEffect("NLEOpenGLBeamParticleDissipate", MakeEffect<NLEOpenGLBeamParticleDissipate>,
                   {"A93A0D45-C9CA-4891-952D-91600DE288B1"});

constexpr double kDark = 3.0;
constexpr float kSixth = 0.166667F;
constexpr float kByte = 0.003922F;

/// A byte of a premultiplied colour, straight, 0..1.
float Straight(uint8_t value, uint8_t alpha) {
    if (alpha == 0) return 0.0F;
    return std::min(static_cast<float>(value) * 255.0F / static_cast<float>(alpha), 255.0F) * kByte;
}

}  // namespace

BeamParticleEffect::BeamParticleEffect(std::shared_ptr<NLEFilterInfo> filterInfo,
                                       const char* beamGuid, float seconds)
    : NLEOpenGLFilter(std::move(filterInfo)),
      beam(stages.AddAs<NLEOpenGLBeamEffect>(beamGuid)),
      usualDuration(seconds) {
    needCpuFrame = 1;
}

NLEOpenGLBeamParticleConverge::NLEOpenGLBeamParticleConverge(
    std::shared_ptr<NLEFilterInfo> filterInfo)
    : BeamParticleEffect(std::move(filterInfo), kBeamParticleConvergeGuid, 4.0F) {}

NLEOpenGLBeamParticleDissipate::NLEOpenGLBeamParticleDissipate(
    std::shared_ptr<NLEFilterInfo> filterInfo)
    : BeamParticleEffect(std::move(filterInfo), kBeamParticleDissipateGuid, 2.0F) {}

int32_t BeamParticleEffect::InitEffect() {
    stages.InitEffects();
    return NLEOpenGLFilter::InitEffect();
}

int32_t BeamParticleEffect::Resize(int32_t newWidth, int32_t newHeight, int32_t newStride) {
    stages.Resize(newWidth, newHeight, newStride);
    return NLEOpenGLFilter::Resize(newWidth, newHeight, newStride);
}

int32_t BeamParticleEffect::InitParams() {
    engine->AddUniformFloat("uBoundLeftX", 0.0F);
    engine->AddUniformFloat("uBoundRightX", 1.0F);
    engine->AddInputTexture(width, height, stride, true);
    return kFilterOk;
}

void BeamParticleEffect::Collect(const cv::Rect& part, int32_t step) {
    pixels.clear();
    int32_t bright = 0;
    for (int y = part.y; y < part.br().y; ++y) {
        for (int x = part.x; x < part.br().x; ++x) {
            if (binary.at<uint8_t>(y, x) == 0 || bright++ % step != 0) continue;
            pixels.push_back({{x, y}, small.at<cv::Vec4b>(y, x)});
        }
    }
}

int32_t BeamParticleEffect::AddLines(int32_t base, const cv::Size& size) {
    if (pixels.size() < 3) return base;
    float run = 0.0F;
    for (std::size_t i = 0; i < pixels.size(); ++i) {
        const cv::Point2f from = ToDeviceSpace(pixels[i].place, size);
        const cv::Point2f to = ToDeviceSpace(pixels[(i + 1) % pixels.size()].place, size);
        const auto length = static_cast<float>(cv::norm(to - from)) * kSixth;
        beam->SetLine(CurveLine::Straight(from, to, run / (run + length), 1.0F), base);
        run += length;
        const cv::Vec4b& c = pixels[i].color;
        const float color[4] = {Straight(c[2], c[3]), Straight(c[1], c[3]), Straight(c[0], c[3]),
                                1.0F};
        beam->SetLineColor(color, base++);
    }
    return base;
}

cv::Rect BeamParticleEffect::MakeLines(const FrameRecord& first, const cv::Size& size) {
    beam->SetLineCount(0);
    cv::Mat picture;
    GetMat(picture, first);
    if (picture.empty() || picture.type() != CV_8UC4) return {};
    cv::resize(picture, small, size, 0.0, 0.0, cv::INTER_LINEAR);
    cv::cvtColor(small, gray, cv::COLOR_RGBA2GRAY);
    cv::threshold(gray, binary, kDark, 255.0, cv::THRESH_BINARY);
    cv::findContours(binary, contours, cv::RETR_EXTERNAL, cv::CHAIN_APPROX_SIMPLE);
    const int32_t step = cv::countNonZero(binary) / kMostParticles + 1;
    cv::Rect box;
    int32_t count = 0;
    for (const auto& contour : contours) {
        const cv::Rect part = cv::boundingRect(contour);
        box |= part;
        // Parts that lie in the box of another are seen with that one, too.
        if (count >= 2 * kMostParticles) break;
        Collect(part, step);
        count = AddLines(count, size);
    }
    beam->SetLineCount(count);
    return box;
}

void BeamParticleEffect::SendBoth(const char* own, const char* ofBeam, float value) {
    engine->SetUniformFloat(own, value);
    beam->SetParam(ofBeam, kParamFloat, NLEParamValue::Float(value));
}

int32_t BeamParticleEffect::DoEffect(const FrameRecord& second, const FrameRecord& first,
                                     FrameRecord& out, int32_t frameWidth, int32_t frameHeight,
                                     int32_t frameStride) {
    if (!engine || !beam) return kFilterFailed;
    UploadParams();
    UploadGlobalTime(*engine, Time());
    int32_t slot = 0;
    SetInputFrame(slot, first);
    SetInputFrame(slot, second);
    const WorkingSize working = WorkingSize::For(frameWidth, frameHeight);
    const cv::Rect box = MakeLines(first, {working.width, working.height});
    const auto device = [&](int x) {
        return static_cast<float>(x) / static_cast<float>(working.width) * 2.0F - 1.0F;
    };
    SendBoth("uBoundLeftX", "uBoundLeftX", device(box.x));
    SendBoth("uBoundRightX", "uBoundRightX", device(box.br().x));
    SendBoth("duration", "uDuration", FloatOr("duration", usualDuration));
    SendBoth("lifetime", "uLifetime", FloatOr("lifetime", 50.0F));
    SendBoth("amount", "uAmount", FloatOr("amount", 50.0F));
    const int32_t reverse = IntOr("reverse", 0);
    engine->SetUniformInt("reverse", reverse);
    beam->SetParam("uReverse", kParamInt, NLEParamValue::Int(reverse));
    beam->SetProgress(0.0F, 1.0F);
    RunSubFilter(*beam, *this, second, first, frameWidth, frameHeight, frameStride);
    engine->SetInputTexture(slot, beam->GetTargetFrame(0), frameWidth, frameHeight, frameStride);
    return RenderTo(out);
}

}  // namespace kelmo
