// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/text/letters/single_char_blur_type.h"

#include <algorithm>
#include <array>
#include <utility>

#include "effects/text/letters/char_quads.h"
#include "effects/text/letters/letter_quads.h"
#include "framework/filter/effect_registry.h"
#include "framework/filter/filter_guids.h"
#include "framework/filter/text_param.h"

#include "framework/textures/material_binding.h"
#include "platform/host_access.h"

namespace kelmo {
namespace {

const bool kRegistered = RegisterEffect("NLEOpenGLSingleCharBlurType",
                                        MakeEffect<NLEOpenGLSingleCharBlurType>, {"SingleChar"});

constexpr const char* kRatioBlurGuid = "C746C7DD-AE68-4476-9630-2C8EFFD2C10B";
constexpr const char* kTimedBlurGuids[] = {"BD7484D9-2F9B-4D9C-A6AE-080FF8AE6F8E",
                                           "65BE408A-EFD0-43A5-B86D-5692E0222B4B"};
constexpr const char* kCoarseBlurGuids[] = {"13880C53-02BE-4D47-A737-D9D4C57E8E47",
                                            "8B10B87A-AD01-4642-B6E4-9C76967D1EFD"};
constexpr int32_t kMostSamples = NLEOpenGLMotionBlur::kMostFrames;
constexpr float kNoTime = 1e-6F;

constexpr std::array<float, 3 * kQuadVertices> kFramePositions = [] {
    std::array<float, 3 * kQuadVertices> values{};
    for (std::size_t k = 0; k < kQuadVertices; ++k) {
        values[3 * k] = kQuadCorners[k][0];
        values[3 * k + 1] = kQuadCorners[k][1];
    }
    return values;
}();

/// Stays 1 over the first half and falls to 0 over the second.
float LateFade(float progress) {
    return progress <= 0.5F ? 1.0F : 1.0F - 2.0F * (progress - 0.5F);
}

std::array<float, 4> Pair(const cv::Point2f& left, const cv::Point2f& right) {
    return {left.x, left.y, right.x, right.y};
}

}  // namespace

NLEOpenGLSingleCharBlurType::NLEOpenGLSingleCharBlurType(std::shared_ptr<NLEFilterInfo> filterInfo)
    : NLEOpenGLFilter(std::move(filterInfo)),
      blurFilter(stages.AddAs<NLEOpenGLDualKawaseBlur>(kDualKawaseBlurGuid)),
      motionBlurFilter(stages.AddAs<NLEOpenGLMotionBlur>(kMotionBlurGuid)) {
    BuildQuads();
}

NLEOpenGLSingleCharBlurType::Variant NLEOpenGLSingleCharBlurType::OwnVariant() const {
    const auto isOneOf = [this](const auto& guids) {
        return std::find(std::begin(guids), std::end(guids), info->guid) != std::end(guids);
    };
    if (!info) return Variant::kMotionBlur;
    if (info->guid == kRatioBlurGuid) return Variant::kRatioBlur;
    if (isOneOf(kTimedBlurGuids)) return Variant::kTimedBlur;
    return isOneOf(kCoarseBlurGuids) ? Variant::kTimedBlurCoarse : Variant::kMotionBlur;
}

int32_t NLEOpenGLSingleCharBlurType::InitEffect() {
    stages.InitEffects();
    return NLEOpenGLFilter::InitEffect();
}

int32_t NLEOpenGLSingleCharBlurType::Resize(int32_t newWidth, int32_t newHeight,
                                            int32_t newStride) {
    stages.Resize(newWidth, newHeight, newStride);
    return NLEOpenGLFilter::Resize(newWidth, newHeight, newStride);
}

int32_t NLEOpenGLSingleCharBlurType::InitParams() {
    for (int32_t k = 0; k <= kMostSamples; ++k) engine->AddRenderTarget();
    for (const char* name : {"globalTextCenter", "globalTextBLPoint", "globalTextBRPoint",
                             "globalTextTLPoint", "globalTextTRPoint"}) {
        engine->AddUniformVec2(name, 0.0F, 0.0F);
    }
    engine->AddUniformFloat("textAngle", 0.0F);
    engine->AddUniformFloat("dt", 0.0F);
    engine->AddUniformFloat("dstAlpha", 1.0F);
    for (const char* name : {"charNums", "curIteration", "calLayer", "curCharNum"}) {
        engine->AddUniformInt(name, 0);
    }
    return kFilterOk;
}

void NLEOpenGLSingleCharBlurType::TakeText(TextPath& text) {
    if (textPath && text.IsSame(textPath.get())) return;
    text.Clone(&textPath);
    LogInfo("Get TextPath Success:%d", 1);
    const cv::Size frame(engine->GetWidth(), engine->GetHeight());
    if (frame.area() <= 0) return;
    const cv::Point2f anchor = TextAnchor(text, frame);
    const float aspect = static_cast<float>(frame.width) / static_cast<float>(frame.height);
    engine->SetUniformVec2("globalTextCenter", 2.0F * (anchor.x - 0.5F) * aspect,
                           2.0F * (1.0F - anchor.y - 0.5F));
    textAngle = text.GetAngle();
    CharReading reading;
    reading.layout = true;
    outlines.ReadCharOutlines(text, frame, reading);
    charCount = static_cast<int32_t>(outlines.Count());
    BuildQuads();
    SendTextCorners();
}

void NLEOpenGLSingleCharBlurType::BuildQuads() {
    const cv::Size frame = engine ? cv::Size(engine->GetWidth(), engine->GetHeight()) : cv::Size();
    const std::vector<CharQuad> quads = BuildCharQuads(outlines, frame, outlines.Placement());
    triangleCount = static_cast<int32_t>(2 * quads.size());
    FillCharPlaces(quads, positions, texcoords);
    FillCharVertices<4>(quads, centers, [](const CharQuad& quad, std::size_t index, std::size_t) {
        return std::array{quad.center.x, quad.center.y, static_cast<float>(index), quad.angle};
    });
    FillCharVertices<2>(quads, topLefts, [](const CharQuad& quad, std::size_t, std::size_t) {
        const auto& [a, b, c, d] = quad.corners;
        return std::array{std::min({a.x, b.x, c.x, d.x}), std::max({a.y, b.y, c.y, d.y})};
    });
    FillCharVertices<2>(quads, bottomRights, [](const CharQuad& quad, std::size_t, std::size_t) {
        const auto& [a, b, c, d] = quad.corners;
        return std::array{std::max({a.x, b.x, c.x, d.x}), std::min({a.y, b.y, c.y, d.y})};
    });
    FillCharVertices<2>(quads, midLefts, [](const CharQuad& quad, std::size_t, std::size_t) {
        const cv::Point2f middle = (quad.DeviceCorner(1) + quad.DeviceCorner(2)) * 0.5F;
        return std::array{middle.x, middle.y};
    });
    const float aspect = frame.area() > 0
                             ? static_cast<float>(frame.width) / static_cast<float>(frame.height)
                             : 1.0F;
    std::vector<UprightCorners> upright;
    for (const CharQuad& quad : quads) {
        upright.push_back(OrderCorners({quad.DeviceCorner(0), quad.DeviceCorner(1),
                                        quad.DeviceCorner(2), quad.DeviceCorner(3)},
                                       quad.center, textAngle, aspect));
    }
    FillCharVertices<4>(quads, blrPoints, [&](const CharQuad&, std::size_t index, std::size_t) {
        return Pair(upright[index].bottomLeft, upright[index].bottomRight);
    });
    FillCharVertices<4>(quads, tlrPoints, [&](const CharQuad&, std::size_t index, std::size_t) {
        return Pair(upright[index].topLeft, upright[index].topRight);
    });
}

void NLEOpenGLSingleCharBlurType::SendTextCorners() {
    const auto w = static_cast<float>(engine->GetWidth());
    const auto h = static_cast<float>(engine->GetHeight());
    const cv::RotatedRect box =
        TightRectangle(outlines.CharPolylines(), {engine->GetWidth(), engine->GetHeight()});
    cv::Point2f pixels[4];
    box.points(pixels);
    std::array<cv::Point2f, 4> corners;
    for (std::size_t k = 0; k < corners.size(); ++k) {
        corners[k] = {pixels[k].x / w, 1.0F - pixels[k].y / h};
    }
    const UprightCorners upright =
        OrderCorners(corners, {box.center.x / w, 1.0F - box.center.y / h}, textAngle, w / h);
    const auto send = [this](const char* name, const cv::Point2f& at) {
        engine->SetUniformVec2(name, 2.0F * at.x - 1.0F, 2.0F * at.y - 1.0F);
    };
    send("globalTextBLPoint", upright.bottomLeft);
    send("globalTextBRPoint", upright.bottomRight);
    send("globalTextTLPoint", upright.topLeft);
    send("globalTextTRPoint", upright.topRight);
}

bool NLEOpenGLSingleCharBlurType::WholeFrame() const {
    const FrameTime time = Time();
    const float t = time.position;
    const float untilOutro = time.duration > outro ? time.duration - outro : 0.0F;
    if (outro > 0.0F && t - untilOutro <= 0.0F) return true;
    return intro > 0.0F && t >= intro;
}

void NLEOpenGLSingleCharBlurType::BindGeometry(bool whole) {
    engine->AddVertexAttribute("position", 3, whole ? kFramePositions.data() : positions.data(),
                               false, false);
    engine->AddVertexAttribute("texcoord", 2, whole ? &kQuadTexCoords[0][0] : texcoords.data(),
                               false, false);
    engine->AddVertexAttribute("texcoord_top_left", 2, topLefts.data(), false, false);
    engine->AddVertexAttribute("texcoord_bottom_right", 2, bottomRights.data(), false, false);
    engine->AddVertexAttribute("center", 4, centers.data(), false, false);
    engine->AddVertexAttribute("midleft", 2, midLefts.data(), false, false);
    engine->AddVertexAttribute("blrPnt", 4, blrPoints.data(), false, false);
    engine->AddVertexAttribute("tlrPnt", 4, tlrPoints.data(), false, false);
    engine->SetVertexCount(whole ? kQuadVertices : 3 * triangleCount);
}

bool NLEOpenGLSingleCharBlurType::SamplesWanted(int32_t& samples, float& distance) {
    distance = FloatOr("motion_blur_length", 0.0F) * 0.01F;
    samples = std::min(IntOr("motion_blur_frame_count", 0), kMostSamples);
    if (!motionBlurFilter || !(distance > 0.0F) || samples < 1 || position < 1) return false;
    // An exit has nothing before its first frames.
    return !(FindParam("Intro") && intro < kNoTime && position < samples);
}

int32_t NLEOpenGLSingleCharBlurType::DrawSamples(const Job& job, int32_t samples, float distance) {
    const float t = Time().position;
    const auto newest = static_cast<float>(samples / 2);
    samplesDrawn.clear();
    for (int32_t k = 0; k < samples; ++k) {
        samplesDrawn.push_back(GetTargetFrame(k));
        engine->SetRenderTarget(k);
        engine->SetUniformFloat("global_time", t + (newest - static_cast<float>(k)) * distance);
        FrameRecord kept = FrameRecord::TargetLess(job.width, job.height, job.stride);
        if (RenderTo(kept) != kFilterOk) return kFilterFailed;
    }
    Resize(job.width, job.height, job.stride);
    engine->SetUniformFloat("global_time", t);
    motionBlurFilter->historyFrames = &samplesDrawn;
    return motionBlurFilter->DoEffect({}, job.first, job.out, job.width, job.height, job.stride);
}

int32_t NLEOpenGLSingleCharBlurType::DrawWithMotionBlur(const Job& job) {
    const float d = Time().Progress();
    const float in = FloatOr("In_timeRatio", 0.0F);
    engine->SetUniformFloat("dt", d);
    engine->SetUniformFloat("In_timeRatio", in);
    engine->SetUniformFloat("out_timeRatio", std::max(in, FloatOr("out_timeRatio", 0.0F)));
    engine->SetUniformFloat("dstAlpha", LateFade(d));
    int32_t slot = 0;
    SetInputFrame(slot, job.first);
    BindFirstMaterial(*engine, slot, textureFrames.get());
    int32_t samples = 0;
    float distance = 0.0F;
    return SamplesWanted(samples, distance) ? DrawSamples(job, samples, distance)
                                            : RenderTo(job.out);
}

int32_t NLEOpenGLSingleCharBlurType::DrawWithRatioBlur(const Job& job) {
    if (!blurFilter) return kFilterFailed;
    const float d = Time().Progress();
    const float in = FloatOr("In_timeRatio", 0.0F);
    const float away = std::max(in, FloatOr("out_timeRatio", 0.0F));
    float e = 0.0F;
    if (in > d) {
        e = 1.0F - d / in;
    } else if (d > away) {
        e = (d - away) / (1.0F - away);
    }
    engine->SetUniformFloat("dt", e);
    engine->SetUniformFloat("dstAlpha", LateFade(e));
    cv::Mat picture;
    GetMat(picture, job.first);
    ScalePicture(picture, {job.width, job.height}, ClearnessLevel(1.0F - e), scaled);
    BindImageFrame(*engine, 0, scaled);
    int32_t slot = 1;
    BindFirstMaterial(*engine, slot, textureFrames.get());
    return DrawBlurred(job, static_cast<int32_t>(FloatOr("uIterations", 0.0F) * e));
}

int32_t NLEOpenGLSingleCharBlurType::DrawWithTimedBlur(const Job& job) {
    if (!blurFilter) return kFilterFailed;
    const FrameTime time = Time();
    const float come = std::clamp(time.position / (intro + kNoTime), 0.0F, 1.0F);
    const float stay =
        1.0F -
        std::clamp((time.position - (time.duration - outro)) / (outro + kNoTime), 0.0F, 1.0F);
    const bool coming = intro > 0.0F;
    const bool going = !coming && outro > 0.0F;
    const float alpha = coming ? come : going ? stay : 1.0F;
    auto iterations = static_cast<int32_t>((1.0F - alpha) * 4.0F + 0.5F);
    if (OwnVariant() == Variant::kTimedBlurCoarse) {
        if (coming) iterations = alpha < 0.25F ? 1 : 0;
        if (going) iterations = static_cast<int32_t>((1.0F - alpha) * 3.0F + 0.5F);
    }
    engine->SetUniformFloat("dstAlpha", alpha);
    int32_t slot = 0;
    SetInputFrame(slot, job.first);
    BindFirstMaterial(*engine, slot, textureFrames.get());
    return DrawBlurred(job, iterations);
}

int32_t NLEOpenGLSingleCharBlurType::DrawBlurred(const Job& job, int32_t iterations) {
    blurFilter->SetParam("uIterations", kParamInt, NLEParamValue::Int(iterations));
    FrameRecord sharp = FrameRecord::TargetLess(job.width, job.height, job.stride);
    if (RenderTo(sharp) != kFilterOk) return kFilterFailed;
    blurFilter->inputOverride = TextureReference(GetResultFrame());
    return blurFilter->DoEffect({}, job.first, job.out, job.width, job.height, job.stride);
}

int32_t NLEOpenGLSingleCharBlurType::DoEffect(const FrameRecord&, const FrameRecord& first,
                                              FrameRecord& out, int32_t frameWidth,
                                              int32_t frameHeight, int32_t frameStride) {
    if (!engine) return kFilterFailed;
    UploadParams();
    TakeTextParam(*this, [this](TextPath& text) { TakeText(text); });
    intro = FloatOr("Intro", 0.0F);
    outro = FloatOr("Outro", 0.0F);
    engine->SetUniformFloat("textAngle", textAngle);
    UploadGlobalTime(*engine, Time());
    engine->SetBlendMode(kBlendOver);
    engine->SetDrawType(kDrawTriangles);
    engine->SetUniformInt("charNums", charCount);
    BindGeometry(WholeFrame());
    const Job job{first, out, frameWidth, frameHeight, frameStride};
    switch (OwnVariant()) {
        case Variant::kRatioBlur:
            return DrawWithRatioBlur(job);
        case Variant::kTimedBlur:
        case Variant::kTimedBlurCoarse:
            return DrawWithTimedBlur(job);
        case Variant::kMotionBlur:
            break;
    }
    return DrawWithMotionBlur(job);
}

}  // namespace kelmo
