// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/beam/tracked/beam_hand_tracking_effect.h"

#include <utility>

#include "framework/filter/effect_registry.h"

namespace kelmo {
namespace {

std::unique_ptr<NLEOpenGLFilter> MakeHandTracking(std::shared_ptr<NLEFilterInfo> info,
                                                  const char* lookGuid) {
    return std::make_unique<NLEOpenGLBeamHandTrackingEffect>(std::move(info), lookGuid);
}

const bool kRegistered =
    RegisterEffect("NLEOpenGLBeamHandTrackingEffect", MakeHandTracking,
                   {"BeamHandTracking", "169C7E51-637C-07F5-CFD3-C2C4E0BF3ADA"});

constexpr std::size_t kPoints[2] = {10, 9};
constexpr std::size_t kLongest = 15;
constexpr float kFarOutside = 4.0F;

}  // namespace

NLEOpenGLBeamHandTrackingEffect::NLEOpenGLBeamHandTrackingEffect(
    std::shared_ptr<NLEFilterInfo> filterInfo, const char* lookGuid)
    : TrackedLight(std::move(filterInfo), lookGuid, kAIPoseFilter) {}

void NLEOpenGLBeamHandTrackingEffect::Follow(Trail& trail, const AIDATA::HumanPose& person,
                                             std::size_t index) {
    const bool known = index < person.points.size();
    const auto [x, y] = known ? person.points[index] : std::pair(-1.0F, -1.0F);
    if (x >= 0.0F && y >= 0.0F && x < kFarOutside && y < kFarOutside) {
        trail.emplace_back(static_cast<int>(static_cast<float>(size.width) * x),
                           static_cast<int>(static_cast<float>(size.height) * y));
    } else if (!trail.empty()) {
        trail.erase(trail.begin());
    }
    if (trail.size() > kLongest) trail.erase(trail.begin());
}

void NLEOpenGLBeamHandTrackingEffect::MakeLines(const AIImage& frame, const AIImage& input) {
    const auto found = tracker.Analyse<AIDATA::HumanPoseDatas>(frame, input);
    if (!found) return;
    for (const AIDATA::HumanPose& person : found->persons) {
        for (std::size_t i = 0; i < trails.size(); ++i) {
            Follow(trails[i], person, kPoints[i]);
            AddRing(trails[i]);
        }
    }
}

}  // namespace kelmo
