// SPDX-License-Identifier: GPL-3.0-or-later
#include "ai/face/face_tracker.h"

#include <algorithm>

namespace kelmo {

namespace {

constexpr int kSearchInterval = 5;
constexpr size_t kMaxFaces = 16;
constexpr float kSameFace = 0.3f;
/// In distances of the outer eye corners: rests at 1 Hz, follows without visible lag.
constexpr OneEuro::Settings kSmoothing = {1.0f, 40.0f, 1.0f};

}  // namespace

FaceTracker::FaceTracker(std::shared_ptr<ModelStore> store)
    : FrameTracker(kSearchInterval),
      detector(AnchorDetector::Face(store)),
      nearDetector(AnchorDetector::NearFace(store)),
      mesh(store) {}

void FaceTracker::Take(const FaceShape& found, TrackedFace& face) {
    // The next look follows the face itself, not its smoothed image, which comes later.
    face.region = FaceRegion(found);
    face.shape = found;
    static_assert(sizeof(cv::Point3f) == 3 * sizeof(float));
    face.smoothing.Apply({&face.shape.points[0].x, 3 * kFacePointCount}, found.EyeDistance());
}

bool FaceTracker::IsKnown(const cv::Rect2f& box) const {
    return std::any_of(tracked.begin(), tracked.end(), [&](const TrackedFace& face) {
        return Overlap(face.shape.Bounds(), box) > kSameFace;
    });
}

void FaceTracker::Follow(PicturePyramid& frame) {
    std::vector<TrackedFace> before = std::move(tracked);
    tracked.clear();
    for (TrackedFace& face : before) {
        FaceShape found;
        if (!mesh.RunFine(frame, face.region, found) || IsKnown(found.Bounds())) continue;
        Take(found, face);
        tracked.push_back(std::move(face));
    }
}

void FaceTracker::FindNew(PicturePyramid& frame) {
    std::vector<Detection> found = detector.Detect(frame);
    if (found.empty() && tracked.empty()) found = nearDetector.Detect(frame);
    std::stable_sort(found.begin(), found.end(), [](const Detection& a, const Detection& b) {
        return a.box.area() > b.box.area();
    });
    for (const Detection& detection : found) {
        if (tracked.size() >= kMaxFaces) return;
        if (IsKnown(detection.box)) continue;
        const std::vector<cv::Point2f>& k = detection.keypoints;
        FaceShape shape;
        if (!mesh.RunCoarse(frame, FaceRegion(detection.box, k[0], k[1]), shape) ||
            !mesh.RunFine(frame, FaceRegion(shape), shape) || IsKnown(shape.Bounds()))
            continue;
        TrackedFace face;
        face.smoothing = OneEuro(kSmoothing);
        face.number = NextNumber();
        Take(shape, face);
        tracked.push_back(std::move(face));
    }
}

}  // namespace kelmo
