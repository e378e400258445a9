// SPDX-License-Identifier: GPL-3.0-or-later
#include "ai/detect/anchor_detector.h"

#include <algorithm>
#include <cmath>

namespace kelmo {

namespace {

constexpr float kMinScore = 0.5f;
constexpr float kSameOverlap = 0.3f;

float Logistic(float x) {
    return 1.0f / (1.0f + std::exp(-std::clamp(x, -100.0f, 100.0f)));
}

/// Adds `share` of a detection to a sum.
void AddShare(const Detection& part, float share, Detection& sum) {
    sum.box.x += part.box.x * share;
    sum.box.y += part.box.y * share;
    sum.box.width += part.box.width * share;
    sum.box.height += part.box.height * share;
    for (size_t k = 0; k < sum.keypoints.size(); ++k) sum.keypoints[k] += part.keypoints[k] * share;
}

}  // namespace

float Overlap(const cv::Rect2f& a, const cv::Rect2f& b) {
    const float common = (a & b).area();
    const float whole = a.area() + b.area() - common;
    return whole > 0 ? common / whole : 0.0f;
}

std::vector<Detection> MergeDetections(std::vector<Detection> found) {
    std::stable_sort(found.begin(), found.end(),
                     [](const Detection& a, const Detection& b) { return a.score > b.score; });
    std::vector<Detection> merged;
    std::vector<bool> taken(found.size(), false);
    for (size_t best = 0; best < found.size(); ++best) {
        if (taken[best]) continue;
        float total = 0.0f;
        std::vector<size_t> group;
        for (size_t i = best; i < found.size(); ++i) {
            if (taken[i] || (i != best && Overlap(found[best].box, found[i].box) <= kSameOverlap))
                continue;
            taken[i] = true;
            group.push_back(i);
            total += found[i].score;
        }
        Detection sum;
        sum.keypoints.resize(found[best].keypoints.size());
        sum.score = found[best].score;
        for (size_t i : group) AddShare(found[i], found[i].score / total, sum);
        merged.push_back(std::move(sum));
    }
    return merged;
}

AnchorDetector::AnchorDetector(std::shared_ptr<ModelStore> store, NetworkId id,
                               std::vector<Layer> layers, int keypoints)
    : store(std::move(store)), id(id), keypointCount(keypoints) {
    for (const Layer& layer : layers)
        for (int y = 0; y < layer.cells; ++y)
            for (int x = 0; x < layer.cells; ++x)
                anchors.insert(anchors.end(), static_cast<size_t>(layer.anchors),
                               cv::Point2f(x + 0.5f, y + 0.5f) / layer.cells);
}

AnchorDetector AnchorDetector::Face(std::shared_ptr<ModelStore> store) {
    return {std::move(store), NetworkId::kFaceDetector, {{48, 1}}, 6};
}

AnchorDetector AnchorDetector::NearFace(std::shared_ptr<ModelStore> store) {
    return {std::move(store), NetworkId::kFaceDetectorNear, {{16, 2}, {8, 6}}, 6};
}

AnchorDetector AnchorDetector::Pose(std::shared_ptr<ModelStore> store) {
    return {std::move(store), NetworkId::kPoseDetector, {{28, 2}, {14, 2}, {7, 6}}, 4};
}

std::vector<Detection> AnchorDetector::Detect(PicturePyramid& frame) const {
    NetworkLease network = store->Lease(id);
    if (!network) return {};
    const int size = SpecOf(id).inputWidth;
    const Letterbox letterbox = frame.Fit(size, ColourRange::kMinusOneToOne, network->Input());
    if (!network->Run()) return {};

    const std::span<const float> boxes = network->Output(0), scores = network->Output(1);
    const size_t stride = 4 + 2 * static_cast<size_t>(keypointCount);
    std::vector<Detection> found;
    for (size_t i = 0; i < anchors.size(); ++i) {
        const float score = Logistic(scores[i]);
        if (!(score >= kMinScore)) continue;
        const float* b = &boxes[i * stride];
        const cv::Point2f anchor = anchors[i] * size;
        const cv::Point2f centre = letterbox.ToFrame(b[0] + anchor.x, b[1] + anchor.y);
        const cv::Point2f extent(b[2] / letterbox.scale, b[3] / letterbox.scale);
        Detection detection;
        detection.score = score;
        detection.box = {centre.x - extent.x / 2, centre.y - extent.y / 2, extent.x, extent.y};
        for (int k = 0; k < keypointCount; ++k)
            detection.keypoints.push_back(
                letterbox.ToFrame(b[4 + 2 * k] + anchor.x, b[5 + 2 * k] + anchor.y));
        found.push_back(std::move(detection));
    }
    return MergeDetections(std::move(found));
}

}  // namespace kelmo
