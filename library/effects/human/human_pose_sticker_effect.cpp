// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/human/human_pose_sticker_effect.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <utility>

#include "bindings/pose_block.h"
#include "framework/filter/effect_registry.h"

namespace kelmo {
namespace {

const bool kRegistered =
    RegisterEffect("NLEOpenGLHumanPoseStickerEffect", MakeEffect<NLEOpenGLHumanPoseStickerEffect>,
                   {"81316C1E-0D2D-4217-8200-261275619483"});

constexpr const char* kBindingParam = "binding_type";

/// The two body points of each "binding_type".
constexpr int32_t kBindings[][2] = {{2, 1}, {6, 5}};

constexpr float kMissing = -1.0F;

/// Whole pixels. Points are foreign numbers: those far outside stop where an int still holds them.
int32_t Pixel(float value) {
    constexpr float kFar = 1e9F;
    return static_cast<int32_t>(std::clamp(value, -kFar, kFar));
}

float Distance(float x, float y, float otherX, float otherY) {
    return std::hypot(x - otherX, y - otherY);
}

float SizeRatio(int32_t now, int32_t reference) {
    return reference > 0 ? static_cast<float>(now) / static_cast<float>(reference) : 0.0F;
}

}  // namespace

NLEOpenGLHumanPoseStickerEffect::NLEOpenGLHumanPoseStickerEffect(
    std::shared_ptr<NLEFilterInfo> filterInfo)
    : NLEOpenGLCombineFilter(std::move(filterInfo)) {
    needCpuFrame = 1;
}

int32_t NLEOpenGLHumanPoseStickerEffect::InitEffect() {
    const int32_t result = NLEOpenGLCombineFilter::InitEffect();
    // The description's value holds until the host says another.
    if (const NLEFilterParams* const binding = ParamNamed(kBindingParam)) {
        bindingType = CurrentInt(*binding);
    }
    return result;
}

int32_t NLEOpenGLHumanPoseStickerEffect::SetParam(const char* name, int32_t type,
                                                  NLEParamValue value) {
    if (std::strcmp(name, kBindingParam) == 0) {
        if (type != kParamInt) return kFilterRefusedType;
        bindingType = value.AsInt();
    }
    return NLEOpenGLCombineFilter::SetParam(name, type, std::move(value));
}

void NLEOpenGLHumanPoseStickerEffect::TakeReference(const cv::Mat& picture, int32_t indexA,
                                                    int32_t indexB) {
    const int32_t indices[] = {indexA, indexB};
    for (std::size_t i = 0; i < 2; ++i) {
        PosePointReference reference;
        aiTransfer->GetPosePoint(indices[i], &reference);
        referencePoints[2 * i] = static_cast<float>(reference.x);
        referencePoints[2 * i + 1] = static_cast<float>(reference.y);
    }
    referenceCols = picture.cols;
    referenceRows = picture.rows;
    const auto& [ax, ay, bx, by] = referencePoints;
    const float referenceDistance = Distance(ax, ay, bx, by);
    const float scale = Distance(pointA.x, pointA.y, pointB.x, pointB.y) / referenceDistance;
    poseScale = referenceDistance > 0.0F && std::isfinite(scale) ? scale : 1.0F;
    firstPose = false;
}

/// False when the person has no such points, or not both are found: then nothing has changed, so
/// that a body that is half out of the frame gives no size either.
bool NLEOpenGLHumanPoseStickerEffect::TakeBodyPoints(const cv::Mat& picture, int32_t indexA,
                                                     int32_t indexB) {
    const auto& points = poseData->persons.front().points;
    if (points.size() <= static_cast<std::size_t>(std::max(indexA, indexB))) return false;
    const auto& [ax, ay] = points[static_cast<std::size_t>(indexA)];
    const auto& [bx, by] = points[static_cast<std::size_t>(indexB)];
    if (ax == kMissing || bx == kMissing) return false;
    if (!std::isfinite(ax + ay + bx + by)) return false;
    pointA = {ax, ay};
    pointB = {bx, by};
    if (firstPose) TakeReference(picture, indexA, indexB);
    return true;
}

int32_t NLEOpenGLHumanPoseStickerEffect::UpdatePose(const cv::Mat& picture, int32_t binding,
                                                    cv::Point2f& anchor) {
    void* block = nullptr;
    int32_t length = 0;
    if (!aiTransfer || !aiTransfer->GetPoseBlock(&block, &length)) return kFilterFailed;
    if (!poseData) poseData = std::make_shared<AIDATA::HumanPoseDatas>();
    const auto size = static_cast<std::size_t>(std::max(length, 0));
    ParsePoseBlock(static_cast<const uint8_t*>(block), size, *poseData);
    if (poseData->persons.empty()) return kFilterFailed;
    if (binding == 0 || binding == 1) {
        const auto& [indexA, indexB] = kBindings[binding];
        if (!TakeBodyPoints(picture, indexA, indexB)) return kFilterFailed;
    }
    const auto columns = static_cast<float>(picture.cols);
    const auto rows = static_cast<float>(picture.rows);
    anchor.x = (columns * pointB.x + columns * pointA.x) * 0.5F;
    anchor.y = (rows * pointB.y + rows * pointA.y) * 0.5F;
    return kFilterOk;
}

int32_t NLEOpenGLHumanPoseStickerEffect::DoEffect(const FrameRecord& second,
                                                  const FrameRecord& first, FrameRecord& out,
                                                  int32_t, int32_t, int32_t) {
    if (!engine) return kFilterFailed;
    cv::Mat picture;
    GetMat(picture, first);
    if (picture.empty()) return kFilterFailed;
    cv::Point2f anchor;
    if (UpdatePose(picture, bindingType, anchor) != kFilterOk) return kFilterFailed;
    int32_t slot = 0;
    SetInputFrame(slot, first);
    SetInputFrame(slot, second);
    UploadParams();
    engine->SetUniformInt("anchor_point_x", Pixel(anchor.x));
    engine->SetUniformInt("anchor_point_y", Pixel(anchor.y));
    // Before any body was seen there is no size to compare with, and the sticker has none either.
    engine->SetUniformFloat("scale_x", poseScale * SizeRatio(picture.cols, referenceCols));
    engine->SetUniformFloat("scale_y", poseScale * SizeRatio(picture.rows, referenceRows));
    return RenderTo(out);
}

}  // namespace kelmo
