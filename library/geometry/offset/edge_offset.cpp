// SPDX-License-Identifier: GPL-3.0-or-later
#include "geometry/offset/edge_offset.h"

#include <algorithm>
#include <cmath>

namespace kelmo {
namespace {

// Below this difference of two unit directions the edges run straight on.
constexpr double kStraightLimit = 0.0001;
// Unit directions are stored as floats, so a mitre divisor below this is their rounding alone.
constexpr double kReversalLimit = 1e-6;

const cv::Point2f kAlongX(1, 0);

// Of floats and their differences: in double precision no square of these overflows.
double Length(const cv::Point2d& vector) {
    return std::sqrt(vector.x * vector.x + vector.y * vector.y);
}

cv::Point2d Unit(const cv::Point2d& vector) {
    const double length = Length(vector);
    if (!(length > 0) || !std::isfinite(length)) return {0, 0};
    return {vector.x / length, vector.y / length};
}

bool HasLength(const cv::Point2f& direction) {
    return direction.x != 0 || direction.y != 0;
}

// Gives steps without length the direction of the step before them, wrapping around.
std::vector<cv::Point2f> FilledFromBefore(std::vector<cv::Point2f> directions) {
    const size_t count = directions.size();
    cv::Point2f last(0, 0);
    for (size_t round = 0; round < 2; ++round) {
        for (size_t i = 0; i < count; ++i) {
            if (HasLength(directions[i])) {
                last = directions[i];
            } else {
                directions[i] = last;
            }
        }
    }
    return directions;
}

// The same from the step behind them.
std::vector<cv::Point2f> FilledFromBehind(std::vector<cv::Point2f> directions) {
    std::vector<cv::Point2f> turned(directions.rbegin(), directions.rend());
    turned = FilledFromBefore(std::move(turned));
    return {turned.rbegin(), turned.rend()};
}

}  // namespace

cv::Point2f UnitVector(const cv::Point2f& vector) {
    const cv::Point2d unit = Unit(cv::Point2d(vector.x, vector.y));
    return {static_cast<float>(unit.x), static_cast<float>(unit.y)};
}

cv::Point2f OffsetDirection(const cv::Point2f& incoming, const cv::Point2f& outgoing) {
    const cv::Point2d turn(static_cast<double>(outgoing.x) - incoming.x,
                           static_cast<double>(outgoing.y) - incoming.y);
    if (Length(turn) < kStraightLimit) return {outgoing.y, -outgoing.x};
    const cv::Point2d mitre = Unit(turn);
    const double divisor = outgoing.y * mitre.x - outgoing.x * mitre.y;
    if (!(std::abs(divisor) > kReversalLimit)) return {0, 0};
    return {static_cast<float>(mitre.x / divisor), static_cast<float>(mitre.y / divisor)};
}

std::vector<EdgeCoreInfo> OffsetDirections(const std::vector<cv::Point2f>& points) {
    const size_t count = points.size();
    std::vector<cv::Point2f> steps(count);  // step i leads from point i to the next one
    for (size_t i = 0; i < count; ++i) steps[i] = UnitVector(points[(i + 1) % count] - points[i]);
    const std::vector<cv::Point2f> before = FilledFromBefore(steps);
    const std::vector<cv::Point2f> behind = FilledFromBehind(steps);
    std::vector<EdgeCoreInfo> cores;
    cores.reserve(count);
    for (size_t i = 0; i < count; ++i) {
        cores.emplace_back(OffsetDirection(before[(i + count - 1) % count], behind[i]));
    }
    return cores;
}

std::vector<cv::Point2f> StepDirections(const std::vector<cv::Point2f>& edges) {
    std::vector<cv::Point2f> steps(edges.size() / 2);
    for (size_t k = 0; k < steps.size(); ++k) {
        steps[k] = UnitVector(edges[2 * k + 1] - edges[2 * k]);
    }
    steps = FilledFromBefore(std::move(steps));
    if (!steps.empty() && !HasLength(steps[0])) std::fill(steps.begin(), steps.end(), kAlongX);
    return steps;
}

}  // namespace kelmo
