// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/scene/planes/plane_map_effect.h"

#include <algorithm>
#include <cmath>
#include <opencv2/imgproc.hpp>
#include <utility>

#include "framework/filter/effect_registry.h"
#include "framework/shared/matrix4.h"
#include "framework/shared/quad_corners.h"
#include "framework/shared/working_size.h"

namespace kelmo {
namespace {

const bool kRegistered =
    RegisterEffect("NLEOpenGLPlaneMapEffect", MakeEffect<NLEOpenGLPlaneMapEffect>,
                   {"PlaneMap", "03E695DF-524D-6758-528A-ECF93285F6F2"});

constexpr double kCertain = 100.0;
constexpr float kOfWidth = 5.2F;

}  // namespace

NLEOpenGLPlaneMapEffect::NLEOpenGLPlaneMapEffect(std::shared_ptr<NLEFilterInfo> filterInfo)
    : NLEOpenGLCombineFilter(std::move(filterInfo)) {
    needCpuFrame = 1;
}

int32_t NLEOpenGLPlaneMapEffect::InitParams() {
    constexpr float kNoTurn[9] = {1, 0, 0, 0, 1, 0, 0, 0, 1};
    engine->AddUniformVec2("uCenter", 0.0F, 0.0F);
    engine->AddUniformVec2("uRatioWH", 1.0F, 1.0F);
    engine->AddUniformMat3("uRotMat", kNoTurn);
    return kFilterOk;
}

float NLEOpenGLPlaneMapEffect::HeightFraction() {
    if (IntOr("is_motion", 0) != 1) return 0.5F;
    const float cycle = CycleFraction(Time().position, FloatOr("duration", 1.0F));
    const float place = cycle * FloatOr("uOrientation", 1.0F) + FloatOr("uStartPos", 0.5F);
    return place > 1.0F ? place - 1.0F : place < 0.0F ? place + 1.0F : place;
}

void NLEOpenGLPlaneMapEffect::SendPlane(const cv::Rect& person, const cv::Size& size) {
    const auto columns = static_cast<float>(size.width), rows = static_cast<float>(size.height);
    const cv::Rect box = person.empty() ? cv::Rect({}, size) : person;
    const float x = static_cast<float>(box.x) + 0.5F * static_cast<float>(box.width);
    const float y = static_cast<float>(box.y) + HeightFraction() * static_cast<float>(box.height);
    engine->SetUniformVec2("uCenter", (x / columns - 0.5F) * 2.0F + FloatOr("center_x", 0.0F),
                           (y / rows - 0.5F) * -2.0F + FloatOr("center_y", 0.0F));
    float scale = FloatOr("scale", 1.0F);
    if (IntOr("is_follow_size", 0) == 1) scale *= kOfWidth * static_cast<float>(box.width) / rows;
    const float z = FloatOr("shifting", 0.0F) + FloatOr("center_z", 0.0F);
    for (std::size_t k = 0; k < kQuadVertices; ++k) {
        const float corner[4] = {scale * kQuadCorners[k][0], scale * kQuadCorners[k][1], z, 1.0F};
        std::copy_n(corner, 4, &corners[4 * k]);
    }
}

int32_t NLEOpenGLPlaneMapEffect::DoEffect(const FrameRecord&, const FrameRecord& first,
                                          FrameRecord& out, int32_t frameWidth, int32_t frameHeight,
                                          int32_t) {
    if (!engine || frameWidth <= 0 || frameHeight <= 0) return kFilterFailed;
    UploadParams();
    UploadGlobalTime(*engine, Time());
    const WorkingSize working = WorkingSize::For(frameWidth, frameHeight);
    const cv::Size size(working.width, working.height);
    FrameRecord mask;
    if (!GetHumanMask(mask, segmentation.Get(), maskMat, first, true, true, &size, true, 1)) {
        return kFilterFailed;
    }
    cv::threshold(maskMat, certain, kCertain, 250.0, cv::THRESH_BINARY);
    SendPlane(cv::boundingRect(certain), certain.size());
    const Matrix4 turn =
        Rotation(FloatOr("rotate_x", 0.0F), FloatOr("rotate_y", 0.0F), FloatOr("rotate_z", 0.0F));
    const float turn3[9] = {turn[0], turn[1], turn[2], turn[4], turn[5],
                            turn[6], turn[8], turn[9], turn[10]};
    engine->SetUniformMat3("uRotMat", turn3);
    engine->SetUniformVec2("uRatioWH",
                           static_cast<float>(frameWidth) / static_cast<float>(frameHeight), 1.0F);
    engine->AddVertexAttribute("position", 4, corners.data(), false, false);
    engine->AddVertexAttribute("texcoord", 2, kQuadTexCoords, true, false);
    engine->SetVertexCount(kQuadVertices);
    int32_t slot = 0;
    SetInputFrame(slot, first);
    return RenderTo(out);
}

}  // namespace kelmo
