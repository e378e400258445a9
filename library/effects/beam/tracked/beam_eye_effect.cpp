// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/beam/tracked/beam_eye_effect.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "framework/filter/effect_registry.h"

namespace kelmo {
namespace {

std::unique_ptr<NLEOpenGLFilter> MakeEye(std::shared_ptr<NLEFilterInfo> info,
                                         const char* lookGuid) {
    return std::make_unique<NLEOpenGLBeamEyeEffect>(std::move(info), lookGuid);
}

const bool kRegistered = RegisterEffect(
    "NLEOpenGLBeamEyeEffect", MakeEye,
    {"BeamEye", "91DA9096-BF30-4A12-BCD8-9DC6231EB81D", "4B6015FE-B6C0-94BA-AD35-432497A8451D"});

/// Landmarks round the eyes, in order, and of the pupils.
constexpr std::size_t kEyes[2][8] = {{52, 57, 73, 56, 55, 54, 72, 53},
                                     {58, 63, 76, 62, 61, 60, 75, 59}};
constexpr std::size_t kPupils[2] = {74, 77};
constexpr std::size_t kLandmarks = 78;
constexpr double kAside = 50.0;
constexpr double kRadians = 3.14159265358979323846 / 180.0;

/// Where a head points, seen from the front: of length 1, or nearly 0 when it looks at the viewer.
cv::Point2f Direction(const AIDATA::HumanFaceInfo& face) {
    const double pitch = face.pitch * kRadians, yaw = face.yaw * kRadians;
    cv::Point2d way(-std::sin(yaw), std::cos(yaw) * std::sin(pitch));
    const double square = way.dot(way);
    if (square >= 1e-6) way /= std::sqrt(square);
    return {static_cast<float>(way.x), static_cast<float>(way.y)};
}

/// A landmark in pixels. What a network gives may lie far outside; nobody sees it there.
cv::Point2f PixelOf(const std::pair<float, float>& landmark, const cv::Size& size) {
    const auto within = [](float value) {
        return std::isfinite(value) ? std::clamp(value, -4.0F, 5.0F) : 0.0F;
    };
    return {static_cast<float>(size.width) * within(landmark.first),
            static_cast<float>(size.height) * within(landmark.second)};
}

}  // namespace

NLEOpenGLBeamEyeEffect::NLEOpenGLBeamEyeEffect(std::shared_ptr<NLEFilterInfo> filterInfo,
                                               const char* lookGuid)
    : TrackedLight(std::move(filterInfo), lookGuid, kAIFaceFilter) {}

void NLEOpenGLBeamEyeEffect::MakeLines(const AIImage& frame, const AIImage& input) {
    const auto found = tracker.Analyse<AIDATA::HumanFaceInfoMultiDatas>(frame, input);
    if (!found) return;
    const bool rays = IntOr("ray", 0) == 1;
    for (const AIDATA::HumanFaceInfo& face : found->faces) {
        if (face.landmarks.size() < kLandmarks) continue;
        for (const auto& eye : kEyes) {
            ring.clear();
            for (const std::size_t index : eye) {
                const cv::Point2f pixel = PixelOf(face.landmarks[index], size);
                ring.emplace_back(static_cast<int>(pixel.x), static_cast<int>(pixel.y));
            }
            AddRing(ring);
        }
        if (!rays || !(std::abs(face.yaw) <= kAside)) continue;
        const cv::Point2f way = Direction(face);
        for (const std::size_t pupil : kPupils) {
            const cv::Point2f from = PixelOf(face.landmarks[pupil], size);
            AddRay(from, {from.x + static_cast<float>(size.width) * way.x,
                          from.y + static_cast<float>(size.height) * way.y});
        }
    }
}

}  // namespace kelmo
