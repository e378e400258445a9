// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/human/human_pose_sticker_effect.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <optional>
#include <tuple>
#include <utility>

#include "bindings/pose_block.h"
#include "framework/filter/effect_registry.h"

namespace kelmo {
namespace {

const bool kRegistered =
    RegisterEffect("NLEOpenGLHumanPoseStickerEffect", MakeEffect<NLEOpenGLHumanPoseStickerEffect>,
                   {"81316C1E-0D2D-4217-8200-261275619483"});

constexpr const char* kBindingParam = "binding_type";
constexpr const char* kBehindParam = "behind_person";
/// Behind the clip and its second input.
constexpr int32_t kMaskSlot = 2;

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

/// Both points of a person, or nothing when one of them is missing or no number.
std::optional<std::pair<cv::Point2f, cv::Point2f>> PairOf(const AIDATA::HumanPose& person,
                                                          int32_t indexA, int32_t indexB) {
    const auto& points = person.points;
    if (points.size() <= static_cast<std::size_t>(std::max(indexA, indexB))) return {};
    const auto& [ax, ay] = points[static_cast<std::size_t>(indexA)];
    const auto& [bx, by] = points[static_cast<std::size_t>(indexB)];
    if (ax == kMissing || bx == kMissing || !std::isfinite(ax + ay + bx + by)) return {};
    return {{{ax, ay}, {bx, by}}};
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

int32_t NLEOpenGLHumanPoseStickerEffect::InitParams() {
    if (!ParamNamed(kBehindParam)) return kFilterOk;
    maskHandle = std::make_unique<AIFilterHandle>(kAIMaskFilter);
    for (int i = 0; i < 2; ++i) engine->AddInputTexture(width, height, stride, true);
    return kFilterOk;
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

void NLEOpenGLHumanPoseStickerEffect::AddSticker(cv::Point2f a, cv::Point2f b,
                                                 const cv::Size& frame) {
    const float aspect = static_cast<float>(frame.width) / static_cast<float>(frame.height);
    const float across = (a.x - b.x) * aspect;
    const float up = b.y - a.y;  // image rows grow downwards
    const cv::Point2f middle = (a + b) * 0.5F;
    stickers.insert(stickers.end(),
                    {middle.x, middle.y, std::atan2(up, across), std::hypot(across, up)});
}

/// False when nobody has both points: then nothing has changed, so that a body that is half out of
/// the frame gives no size either.
bool NLEOpenGLHumanPoseStickerEffect::TakeBodyPoints(const cv::Mat& picture, int32_t indexA,
                                                     int32_t indexB) {
    bool found = false;
    for (const AIDATA::HumanPose& person : poseData->persons) {
        const auto points = PairOf(person, indexA, indexB);
        if (!points) continue;
        if (!found) {
            std::tie(pointA, pointB) = *points;
            stickers.clear();
            found = true;
        }
        if (stickers.size() == 4 * std::size_t{kMostStickers}) break;
        AddSticker(points->first, points->second, picture.size());
    }
    if (found && firstPose) TakeReference(picture, indexA, indexB);
    return found;
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

void NLEOpenGLHumanPoseStickerEffect::SendStickers() {
    const auto count = static_cast<int32_t>(stickers.size() / 4);
    engine->SetUniformArrayVec4("stickers", stickers.data(), count);
    engine->SetUniformInt("stickers_count", count);
}

void NLEOpenGLHumanPoseStickerEffect::SendMask(const FrameRecord& first) {
    if (!maskHandle || IntOr(kBehindParam, 0) == 0) return;
    FrameRecord mask;
    int32_t slot = kMaskSlot;
    if (GetHumanMask(mask, maskHandle->Get(), maskMat, first, true, true, nullptr, false, 4)) {
        SetInputFrame(slot, mask);
    }
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
    SendMask(first);
    UploadParams();
    SendStickers();
    engine->SetUniformInt("anchor_point_x", Pixel(anchor.x));
    engine->SetUniformInt("anchor_point_y", Pixel(anchor.y));
    // Before any body was seen there is no size to compare with, and the sticker has none either.
    engine->SetUniformFloat("scale_x", poseScale * SizeRatio(picture.cols, referenceCols));
    engine->SetUniformFloat("scale_y", poseScale * SizeRatio(picture.rows, referenceRows));
    return RenderTo(out);
}

}  // namespace kelmo
