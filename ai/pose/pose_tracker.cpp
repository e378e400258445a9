// SPDX-License-Identifier: GPL-3.0-or-later
#include "ai/pose/pose_tracker.h"

#include <algorithm>
#include <cmath>

namespace kelmo {

namespace {

constexpr int kSearchInterval = 10;
constexpr size_t kMaxBodies = 8;
/// A mark appears above the first and stays until it falls below the second, so that it does not
/// flicker in between.
constexpr float kAppears = 0.5f;
constexpr float kVanishes = 0.4f;
constexpr OneEuro::Settings kSmoothing = {1.0f, 40.0f, 1.0f};

/// Two regions show the same body when the middle of the smaller lies well inside the other and
/// their sizes are alike.
bool SameBody(const RotatedSquare& a, const RotatedSquare& b) {
    const cv::Point2f between = a.centre - b.centre;
    const float smaller = std::min(a.side, b.side), larger = std::max(a.side, b.side);
    return std::hypot(between.x, between.y) < 0.15f * smaller && larger < 2 * smaller;
}

}  // namespace

PoseTracker::PoseTracker(std::shared_ptr<ModelStore> store)
    : FrameTracker(kSearchInterval), estimator(std::move(store)) {}

void PoseTracker::Take(const BodyShape& found, const RotatedSquare& region, TrackedBody& body) {
    body.shape = found;
    static_assert(sizeof(cv::Point2f) == 2 * sizeof(float));
    body.smoothing.Apply({&body.shape.points[0].x, 2 * body.shape.points.size()}, region.side);
    for (size_t i = 0; i < kBodyMarkCount; ++i)
        body.visible[i] = found.confidence[i] > (body.visible[i] ? kVanishes : kAppears);
    body.region = BodyRegion(body.shape.points[kBodyCentre], body.shape.points[kBodyTop]);
}

void PoseTracker::Follow(PicturePyramid& frame) {
    std::vector<TrackedBody> kept;
    for (TrackedBody& body : tracked) {
        BodyShape found;
        if (!estimator.Run(frame, body.region, found)) continue;
        Take(found, body.region, body);
        const bool twice = std::any_of(kept.begin(), kept.end(), [&](const TrackedBody& other) {
            return SameBody(other.region, body.region);
        });
        if (!twice) kept.push_back(std::move(body));
    }
    tracked = std::move(kept);
}

bool PoseTracker::IsKnown(const RotatedSquare& region) const {
    return std::any_of(tracked.begin(), tracked.end(),
                       [&](const TrackedBody& body) { return SameBody(body.region, region); });
}

void PoseTracker::FindNew(PicturePyramid& frame) {
    std::vector<RotatedSquare> regions = estimator.Detect(frame);
    std::stable_sort(regions.begin(), regions.end(),
                     [](const auto& a, const auto& b) { return a.side > b.side; });
    for (const RotatedSquare& region : regions) {
        if (tracked.size() >= kMaxBodies) return;
        if (IsKnown(region)) continue;
        // The first look finds the body's own region, the second one its points.
        BodyShape rough, found;
        if (!estimator.Run(frame, region, rough)) continue;
        const RotatedSquare own = BodyRegion(rough.points[kBodyCentre], rough.points[kBodyTop]);
        if (!estimator.Run(frame, own, found)) continue;
        TrackedBody body;
        body.smoothing = OneEuro(kSmoothing);
        Take(found, own, body);
        if (IsKnown(body.region)) continue;
        body.number = NextNumber();
        tracked.push_back(std::move(body));
    }
}

}  // namespace kelmo
