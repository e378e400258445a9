// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/image/rgb_curve_look_table.h"

#include "framework/filter/effect_registry.h"

namespace kelmo {
namespace {

const bool kRegistered = RegisterEffect(
    "NLEOpenglRGBCurveLookTable", MakeEffect<NLEOpenglRGBCurveLookTable>, {kCurveLookTableGuid});

bool CanBeDrawn(const CurvePoints& knots) {
    return knots.size() >= kMinCurveKnots && knots.size() <= kMaxCurveKnots;
}

}  // namespace

NLEOpenglRGBCurveLookTable::NLEOpenglRGBCurveLookTable(std::shared_ptr<NLEFilterInfo> filterInfo)
    : NLEOpenGLCombineFilter(std::move(filterInfo)) {}

int32_t NLEOpenglRGBCurveLookTable::InitEffect() {
    width = kCurveStripWidth;
    height = 1;
    // New targets are empty: whatever was drawn before is to be drawn again.
    for (Channel& channel : channels) channel.cachedKnots.clear();
    return NLEOpenGLCombineFilter::InitEffect();
}

int32_t NLEOpenglRGBCurveLookTable::Resize(int32_t, int32_t, int32_t) {
    return engine ? kFilterOk : CreateEffect(kCurveStripWidth, 1, kCurveStripStride);
}

int32_t NLEOpenglRGBCurveLookTable::CreateEffect(int32_t newWidth, int32_t newHeight,
                                                 int32_t newStride) {
    if (!MakeEngineEffect(newWidth, newHeight, newStride)) return kFilterFailed;
    InitParams();
    DeclareTimeUniforms();
    engine->AddUniformArrayVec2("controlPoints", controlPoints.data(), kControlPoints);
    engine->AddUniformInt("pointsNums", static_cast<int32_t>(kMaxCurveKnots));
    DeclareParams(*engine, params);
    return BuildProgram();
}

int32_t NLEOpenglRGBCurveLookTable::InitParams() {
    for (int channel = 0; channel < kCurveChannels; ++channel) engine->AddRenderTarget();
    return kFilterOk;
}

int32_t NLEOpenglRGBCurveLookTable::DoEffect(const FrameRecord&, const FrameRecord&, FrameRecord&,
                                             int32_t, int32_t, int32_t) {
    if (!engine) return kFilterFailed;
    for (int index = 0; index < kCurveChannels; ++index) {
        Channel& channel = channels[index];
        ReadCurve(kCurveParams[index].knots, channel.knots);
        ReadCurve(kCurveParams[index].firstControls, channel.firstControls);
        ReadCurve(kCurveParams[index].secondControls, channel.secondControls);
    }
    for (const Channel& channel : channels) {
        if (!CanBeDrawn(channel.knots.points)) return kFilterFailed;
    }
    UploadTimeAndLength(*engine, Time());
    for (int index = 0; index < kCurveChannels; ++index) {
        if (UpdateChannel(channels[index], index) != kFilterOk) return kFilterFailed;
    }
    return kFilterOk;
}

void NLEOpenglRGBCurveLookTable::ReadCurve(const char* name, ParsedCurve& curve) {
    const NLEFilterParams* const param = FindParam(name);
    if (!param) return;
    // `data` holds 511 bytes, which a curve of many knots exceeds; a text of the host is whole in
    // `text`.
    const std::string& whole = param->value.text;
    const std::string_view text = whole.empty() ? param->value.AsText() : std::string_view(whole);
    if (curve.text == text) return;
    curve.text = text;
    curve.points.clear();
    ParseCurveText(curve.text, curve.points);
}

int32_t NLEOpenglRGBCurveLookTable::UpdateChannel(Channel& channel, int32_t index) {
    const CurvePoints& knots = channel.knots.points;
    if (SameCurve(knots, channel.cachedKnots)) return kFilterOk;
    FillControlPoints(channel);
    engine->SetUniformInt("pointsNums", static_cast<int32_t>(knots.size()));
    engine->SetUniformArrayVec2("controlPoints", controlPoints.data(),
                                static_cast<int32_t>(3 * knots.size() - 2));
    if (RenderPass() != kFilterOk) return kFilterFailed;
    engine->SetRenderTarget(index);
    // Only now: a strip that could not be drawn is tried again by the next frame.
    channel.cachedKnots = knots;
    return kFilterOk;
}

void NLEOpenglRGBCurveLookTable::FillControlPoints(const Channel& channel) {
    const CurvePoints& knots = channel.knots.points;
    const std::size_t segments = knots.size() - 1;
    const CurvePoints* first = &channel.firstControls.points;
    const CurvePoints* second = &channel.secondControls.points;
    // Given lists count only when they serve every segment.
    if (first->size() < segments || second->size() < segments) {
        ComputeControlPoints(knots, computedFirst, computedSecond);
        first = &computedFirst;
        second = &computedSecond;
    }
    float* out = controlPoints.data();
    const auto append = [&out](const CurvePoint& point) {
        *out++ = static_cast<float>(point.x);
        *out++ = static_cast<float>(point.y);
    };
    for (std::size_t i = 0; i < segments; ++i) {
        append(knots[i]);
        append((*first)[i]);
        append((*second)[i]);
    }
    append(knots.back());
}

}  // namespace kelmo
