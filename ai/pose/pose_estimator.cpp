// SPDX-License-Identifier: GPL-3.0-or-later
#include "ai/pose/pose_estimator.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace kelmo {

namespace {

constexpr int kInputSize = 256;
constexpr int kHeatSize = 64;
constexpr int kHeatCell = kInputSize / kHeatSize;
constexpr int kHeatMaps = 39;
constexpr int kHeatReach = 3;
constexpr float kMinPresence = 0.5f;
constexpr float kMinHeat = 0.5f;

float Logistic(float x) {
    return 1.0f / (1.0f + std::exp(-std::clamp(x, -100.0f, 100.0f)));
}

/// Moves a point to the middle of the heat round it: the network's heat maps are calmer and more
/// exact than the positions that it gives. Stays where it is when there is little heat.
cv::Point2f Refine(std::span<const float> heat, int mark, cv::Point2f point) {
    const int column = static_cast<int>(std::floor(point.x / kHeatCell));
    const int row = static_cast<int>(std::floor(point.y / kHeatCell));
    if (column < 0 || row < 0 || column >= kHeatSize || row >= kHeatSize) return point;
    float total = 0.0f, strongest = 0.0f;
    cv::Point2f sum;
    for (int y = std::max(0, row - kHeatReach); y <= std::min(kHeatSize - 1, row + kHeatReach); ++y)
        for (int x = std::max(0, column - kHeatReach);
             x <= std::min(kHeatSize - 1, column + kHeatReach); ++x) {
            const float weight =
                Logistic(heat[(size_t(y) * kHeatSize + size_t(x)) * kHeatMaps + size_t(mark)]);
            strongest = std::max(strongest, weight);
            total += weight;
            sum += cv::Point2f(static_cast<float>(x), static_cast<float>(y)) * weight;
        }
    return strongest < kMinHeat ? point : sum * (kHeatCell / total);
}

}  // namespace

RotatedSquare BodyRegion(const cv::Point2f& centre, const cv::Point2f& top) {
    const cv::Point2f up = top - centre;
    RotatedSquare region;
    region.centre = centre;
    region.side = 2.0f * 1.25f * std::hypot(up.x, up.y);
    // 0 when the body is upright.
    region.angle = std::remainder(std::atan2(up.y, up.x) + std::numbers::pi_v<float> / 2,
                                  2 * std::numbers::pi_v<float>);
    return region;
}

PoseEstimator::PoseEstimator(std::shared_ptr<ModelStore> store)
    : store(store), detector(AnchorDetector::Pose(store)) {}

std::vector<RotatedSquare> PoseEstimator::Detect(PicturePyramid& frame) const {
    std::vector<RotatedSquare> regions;
    for (const Detection& body : detector.Detect(frame))
        regions.push_back(BodyRegion(body.keypoints[0], body.keypoints[1]));
    return regions;
}

bool PoseEstimator::Run(PicturePyramid& frame, const RotatedSquare& region,
                        BodyShape& shape) const {
    if (!region.IsUsable()) return false;
    NetworkLease network = store->Lease(NetworkId::kPoseLandmarks);
    if (!network) return false;
    frame.Crop(region, kInputSize, ColourRange::kZeroToOne, network->Input());
    if (!network->Run()) return false;
    shape.presence = network->Output(1)[0];
    if (!(shape.presence >= kMinPresence)) return false;

    const std::span<const float> values = network->Output(0), heat = network->Output(2);
    const CropMapping mapping(region, kInputSize);
    for (int i = 0; i < kBodyPointCount; ++i) {
        const float* value = &values[size_t(i) * 5];
        cv::Point2f point(value[0], value[1]);
        // The helper points are better as they come.
        if (i < kBodyMarkCount) {
            point = Refine(heat, i, point);
            shape.confidence[size_t(i)] = std::min(Logistic(value[3]), Logistic(value[4]));
        }
        shape.points[size_t(i)] = mapping.ToFrame(point.x, point.y);
    }
    return true;
}

}  // namespace kelmo
