// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/scene/planes/texture_animation.h"

#include <algorithm>
#include <utility>

#include "framework/filter/effect_registry.h"
#include "framework/shared/matrix4.h"

namespace kelmo {
namespace {

const bool kRegistered =
    RegisterEffect("NLEOpenGLTextureAnimation", MakeEffect<NLEOpenGLTextureAnimation>,
                   {"EEECC02B-EDFD-4130-A77B-71D6E038DB60"});

constexpr const char* kTextPathParam = "TextPath";
constexpr const char* kColumnNames[] = {"matrix_column0", "matrix_column1", "matrix_column2",
                                        "matrix_column3"};
/// The smooth edge of a letter reaches beyond its outline, in pixels.
constexpr float kSmoothEdge = 1.0F;
const cv::Point2f kOutwards[] = {{-1.0F, -1.0F}, {1.0F, -1.0F}, {1.0F, 1.0F}, {-1.0F, 1.0F}};
/// Corners of the two triangles of a quad.
constexpr int kOrder[] = {2, 3, 0, 2, 0, 1};

}  // namespace

NLEOpenGLTextureAnimation::NLEOpenGLTextureAnimation(std::shared_ptr<NLEFilterInfo> filterInfo)
    : NLEOpenGLFilter(std::move(filterInfo)) {}

void NLEOpenGLTextureAnimation::PutVertex(const cv::Point2f& place, const float* transform) {
    const float s = place.x, t = 1.0F - place.y;
    for (const float value : {2.0F * s - 1.0F, 2.0F * t - 1.0F, 0.0F}) positions.push_back(value);
    texcoords.push_back(s);
    texcoords.push_back(t);
    for (std::size_t i = 0; i < columns.size(); ++i) {
        columns[i].insert(columns[i].end(), transform + 4 * i, transform + 4 * i + 4);
    }
}

void NLEOpenGLTextureAnimation::Clear() {
    positions.clear();
    texcoords.clear();
    for (auto& column : columns) column.clear();
}

void NLEOpenGLTextureAnimation::PutQuad(const cv::Point2f (&corners)[4], const float* transform) {
    for (const int k : kOrder) PutVertex(corners[k], transform);
}

void NLEOpenGLTextureAnimation::TakeText(TextPath& text, int32_t frameWidth, int32_t frameHeight) {
    Clear();
    float p = 0.5F, q = 0.5F;
    text.GetAnchor(&p, &q);
    int32_t canvasWidth = 0, canvasHeight = 0;
    text.GetSize(&canvasWidth, &canvasHeight);
    if (canvasWidth == frameWidth && canvasHeight == frameHeight) p = q = 0.5F;
    const cv::Point2f size(static_cast<float>(frameWidth), static_cast<float>(frameHeight));
    const cv::Point2f offset(size.x * p - 0.5F * static_cast<float>(canvasWidth),
                             size.y * q - 0.5F * static_cast<float>(canvasHeight));
    const int32_t count = std::clamp(text.GetPathCount(), 0, kMostPieces);
    for (int32_t i = 0; i < count; ++i) {
        float corners[8] = {};
        float transform[16] = {};
        text.GetPathCorners(i, corners);
        text.GetPathTransform(i, transform);
        cv::Point2f quad[4];
        for (int k = 0; k < 4; ++k) {
            const cv::Point2f edge = kOutwards[k] * kSmoothEdge;
            const cv::Point2f at = cv::Point2f(corners[2 * k], corners[2 * k + 1]) + edge + offset;
            quad[k] = {at.x / size.x, at.y / size.y};
        }
        PutQuad(quad, transform);
    }
}

int32_t NLEOpenGLTextureAnimation::DoEffect(const FrameRecord&, const FrameRecord& first,
                                            FrameRecord& out, int32_t frameWidth,
                                            int32_t frameHeight, int32_t) {
    if (!engine || frameWidth <= 0 || frameHeight <= 0) return kFilterFailed;
    NLEParamValue value;
    if (FindParamValue(kTextPathParam, value)) {
        if (auto* const text = static_cast<TextPath*>(value.AsPointer())) {
            TakeText(*text, frameWidth, frameHeight);
            hasText = true;
            // The object is the host's, for this frame alone.
            SetParam(kTextPathParam, kParamPointer, NLEParamValue::Pointer(nullptr));
        }
    }
    if (!hasText && positions.empty()) {
        PutQuad({{0.0F, 0.0F}, {1.0F, 0.0F}, {1.0F, 1.0F}, {0.0F, 1.0F}}, kIdentity.data());
    }
    UploadParams();
    UploadGlobalTime(*engine, Time());
    engine->AddVertexAttribute("position", 3, positions.data(), false, false);
    engine->AddVertexAttribute("texcoord", 2, texcoords.data(), false, false);
    for (std::size_t i = 0; i < columns.size(); ++i) {
        engine->AddVertexAttribute(kColumnNames[i], 4, columns[i].data(), false, false);
    }
    engine->SetVertexCount(static_cast<int32_t>(texcoords.size() / 2));
    int32_t slot = 0;
    SetInputFrame(slot, first);
    engine->SetBlendMode(kBlendOver);
    engine->SetDrawType(kDrawTriangles);
    return RenderTo(out);
}

}  // namespace kelmo
