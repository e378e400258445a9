// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/beam/lightning/bolt_branches.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "effects/beam/lightning/random_fraction.h"

namespace kelmo {
namespace {

constexpr int32_t kPlaces = 100;
constexpr int32_t kAngleSteps = 200;
constexpr float kShortest = 0.3F;
constexpr float kLengthRange = 0.3F;
constexpr float kBranchAlpha = 0.7F;
constexpr float kSameX = 0.0001F;

float SquaredDistance(const cv::Point2f& a, const cv::Point2f& b) {
    const cv::Point2f way = a - b;
    return way.dot(way);
}

/// The point at `distance` from `from` on the ray through `through`.
cv::Point2f Along(const cv::Point2f& from, const cv::Point2f& through, float distance) {
    const cv::Point2f way = through - from;
    if (std::abs(way.x) < kSameX) return {from.x, from.y + std::copysign(distance, way.y)};
    return from + way * (distance / std::hypot(way.x, way.y));
}

cv::Point2f Turned(const cv::Point2f& point, const cv::Point2f& about, float degrees) {
    const auto radians = static_cast<float>(degrees * CV_PI / 180.0);
    const float cosine = std::cos(radians);
    const float sine = std::sin(radians);
    const cv::Point2f way = point - about;
    return about + cv::Point2f(way.x * cosine - way.y * sine, way.x * sine + way.y * cosine);
}

float BranchAngle(const BranchShape& shape) {
    constexpr float kHalf = static_cast<float>(kAngleSteps) / 2.0F;
    const float angle =
        shape.angleRange * (static_cast<float>(Rand() % kAngleSteps) / kHalf - 1.0F);
    return angle < 0.0F ? angle - shape.minAngle : angle + shape.minAngle;
}

/// The points that branches have left from.
class UsedPoints {
public:
    /// A point that was not drawn yet. Points are drawn by hundredths of the way, so that some of a
    /// long bolt never have a branch; `kMostBranches` and the count of points leave one to find.
    std::size_t DrawNew(std::size_t points) {
        for (;;) {
            const std::size_t index = points * static_cast<std::size_t>(Rand() % kPlaces) / kPlaces;
            const auto end = used.begin() + static_cast<std::ptrdiff_t>(count);
            if (std::find(used.begin(), end, index) != end) continue;
            used[count++] = index;
            return index;
        }
    }

private:
    std::array<std::size_t, kMostBranches> used = {};
    std::size_t count = 0;
};

}  // namespace

void SortPointsByDistance(std::span<BoltPoint> points, const cv::Point2f& from) {
    // The points know their order: a sort that keeps it by itself takes memory for each bolt.
    std::sort(points.begin(), points.end(), [&](const BoltPoint& a, const BoltPoint& b) {
        const float distanceA = SquaredDistance(a.at, from);
        const float distanceB = SquaredDistance(b.at, from);
        return distanceA != distanceB ? distanceA < distanceB : a.order < b.order;
    });
}

int GenerateBranches(std::span<const BoltPoint> points, float length, int branches,
                     const BranchShape& shape, const BoltLineSink& sink) {
    if (branches < 1 || branches > kMostBranches) return 1;
    if (points.size() < static_cast<std::size_t>(branches)) return 1;
    UsedPoints used;
    for (int branch = 0; branch < branches; ++branch) {
        const std::size_t index = used.DrawNew(points.size());
        const auto left = static_cast<int32_t>(points.size() - index);
        const std::size_t ahead = index + static_cast<std::size_t>(Rand() % left);
        if (ahead == index) continue;
        const BoltPoint& from = points[index];
        const float reach = (RandomFraction(kPlaces) * kLengthRange + kShortest) * length;
        const cv::Point2f straight = Along(from.at, points[ahead].at, reach);
        const cv::Point2f end = Turned(straight, from.at, BranchAngle(shape));
        const float distance = std::sqrt(SquaredDistance(end, from.at));
        FractalBolt({from.at, end, from.progress, 1.0F, kBranchAlpha},
                    {distance * shape.displaceRatio, shape.detail, shape.displaceScale}, nullptr,
                    sink);
    }
    return 0;
}

}  // namespace kelmo
