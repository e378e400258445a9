// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/beam/tracked/beam_eye_effect.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "effects/beam/tracked/head_direction.h"
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
        if (!rays || !LooksAhead(face)) continue;
        const cv::Point2f way = HeadDirection(face);
        for (const std::size_t pupil : kPupils) {
            const cv::Point2f from = PixelOf(face.landmarks[pupil], size);
            AddRay(from, {from.x + static_cast<float>(size.width) * way.x,
                          from.y + static_cast<float>(size.height) * way.y});
        }
    }
}

}  // namespace kelmo
