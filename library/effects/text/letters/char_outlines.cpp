// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/text/letters/char_outlines.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <opencv2/imgproc.hpp>

#include "framework/filter/text_param.h"
#include "framework/shared/easing.h"

namespace kelmo {
namespace {

const cv::Matx23d kStay(1, 0, 0, 0, 1, 0);

/// Points that a type takes, its own first; types that nobody knows are passed over.
int32_t PointsOf(uint8_t type) {
    if (type == kTextCubicTo) return 3;
    return type == kTextQuadraticTo ? 2 : 1;
}

float Distance(const cv::Point2f& a, const cv::Point2f& b) {
    return std::hypot(b.x - a.x, b.y - a.y);
}

int32_t StepsOf(float chord, float tolerance) {
    const float steps = chord / tolerance + 1.0F;
    if (!(steps < static_cast<float>(CharOutlines::kMostSteps))) {
        return chord > 0.0F ? CharOutlines::kMostSteps : 1;
    }
    return static_cast<int32_t>(steps);
}

bool IsTriangle(const cv::Point2f& p, const cv::Point2f& q, const cv::Point2f& r) {
    const float a = Distance(p, q), b = Distance(q, r), c = Distance(r, p);
    return a + b > c && b + c > a && c + a > b;
}

int Pixels(float value) {
    constexpr float kFar = 1e6F;
    return static_cast<int>(std::clamp(value, -kFar, kFar));
}

/// Of all points of a path.
struct Box {
    cv::Point2f low;
    cv::Point2f high;
};

}  // namespace

CharOutlines::Path CharOutlines::PathOf(TextPath& text, int32_t index, bool layout) const {
    Path path;
    path.count = layout ? text.GetLayoutPath(index, &path.types, &path.xs, &path.ys, 0)
                        : text.GetPath(index, &path.types, &path.xs, &path.ys, 0);
    if (!path.types || !path.xs || !path.ys) path.count = 0;
    return path;
}

cv::Point2f CharOutlines::Place(float x, float y) const {
    const float u = (x + offset.x) / static_cast<float>(size.width);
    const float v = (y + offset.y) / static_cast<float>(size.height);
    if (space == CharReading::Space::kDevice) return {2.0F * (u - 0.5F), -2.0F * (v - 0.5F)};
    return {u, 1.0F - v};
}

void CharOutlines::Step(const cv::Point2f& from, const cv::Point2f& to) {
    if (charPolylines.back().empty()) return;  // before the first outline
    charPolylines.back().back().push_back(to);
    charEdges.back().back().push_back({from, to});
    charLengths.back() += Distance(from, to);
}

void CharOutlines::FlattenCharPath(const Path& path, float tolerance) {
    cv::Point2f current;
    for (int32_t k = 0; k < path.count;) {
        const uint8_t type = path.types[k];
        const int32_t used = PointsOf(type);
        if (used > path.count - k) return;
        cv::Point2f points[3];
        for (int32_t i = 0; i < used; ++i) points[i] = Place(path.xs[k + i], path.ys[k + i]);
        k += used;
        if (type == kTextMoveTo) {
            charPolylines.back().emplace_back();
            charEdges.back().emplace_back();
            current = points[0];
            continue;
        }
        if (type != kTextLineTo && used == 1) continue;
        const cv::Point2f end = points[used - 1];
        // A quadratic curve as the cubic one that it equals.
        const cv::Point2f c1 =
            used == 2 ? current + (points[0] - current) * (2.0F / 3.0F) : points[0];
        const cv::Point2f c2 = used == 2 ? end + (points[0] - end) * (2.0F / 3.0F) : points[1];
        const int32_t steps = used == 1 ? 1 : StepsOf(Distance(current, end), tolerance);
        cv::Point2f from = current;
        for (int32_t i = 1; i <= steps; ++i) {
            const float t = static_cast<float>(i) / static_cast<float>(steps);
            const cv::Point2f to = i == steps
                                       ? end
                                       : cv::Point2f(BezierAt(current.x, c1.x, c2.x, end.x, t),
                                                     BezierAt(current.y, c1.y, c2.y, end.y, t));
            Step(from, to);
            from = to;
        }
        current = end;
    }
}

void CharOutlines::FindPlacement(TextPath& text, int32_t index, const Path& layout) {
    const auto points = [this](const Path& path) {
        const auto count = std::min(static_cast<std::size_t>(path.count), kMostPlacementPoints);
        std::vector<cv::Point2f> result(count);
        for (std::size_t i = 0; i < count; ++i) {
            result[i] = cv::Point2f(path.xs[i], path.ys[i]) + offset;
        }
        return result;
    };
    const std::vector<cv::Point2f> from = points(layout);  // a copy: the next call ends the arrays
    const std::vector<cv::Point2f> to = points(PathOf(text, index, false));
    const std::size_t count = std::min(from.size(), to.size());
    for (std::size_t j = 1; j + 1 < count; ++j) {
        for (std::size_t k = j + 1; k < count; ++k) {
            if (!IsTriangle(from[0], from[j], from[k])) continue;
            const cv::Point2f source[] = {from[0], from[j], from[k]};
            const cv::Point2f target[] = {to[0], to[j], to[k]};
            placement = cv::Matx23d(cv::getAffineTransform(source, target).ptr<double>());
            return;
        }
    }
}

void CharOutlines::ReadCharOutlines(TextPath& text, const cv::Size& frame,
                                    const CharReading& reading) {
    charPolylines.clear();
    charEdges.clear();
    charLengths.clear();
    placement = kStay;
    bound = {};
    if (frame.area() <= 0) return;
    size = frame;
    space = reading.space;
    offset = TextOffset(text, frame);
    constexpr float kNone = std::numeric_limits<float>::max();
    // The marks of an empty text.
    Box all{{1.0F, 1.0F}, {-1.0F, -1.0F}};
    bool placed = false;
    const int32_t count = std::clamp(text.GetPathCount(), 0, kMostChars);
    for (int32_t index = 0; index < count; ++index) {
        Path path = PathOf(text, index, reading.layout);
        if (path.count < 1) continue;
        if (reading.layout && !placed && path.count >= 3) {
            FindPlacement(text, index, path);
            placed = true;
            path = PathOf(text, index, true);
        }
        Box box{{kNone, kNone}, {-kNone, -kNone}};
        bool numbers = true;
        for (int32_t k = 0; k < path.count; ++k) {
            const cv::Point2f at = Place(path.xs[k], path.ys[k]);
            numbers = numbers && std::isfinite(at.x) && std::isfinite(at.y);
            box.low = {std::min(box.low.x, at.x), std::min(box.low.y, at.y)};
            box.high = {std::max(box.high.x, at.x), std::max(box.high.y, at.y)};
        }
        if (!numbers || box.low.x > reading.farthestX || box.high.x < -reading.farthestX ||
            box.high.y < -reading.farthestY || box.low.y > reading.farthestY) {
            continue;
        }
        const float area = (box.high.y - box.low.y) * (box.high.x - box.low.x);
        all.low = {std::min(all.low.x, box.low.x), std::min(all.low.y, box.low.y)};
        all.high = {std::max(all.high.x, box.high.x), std::max(all.high.y, box.high.y)};
        charPolylines.emplace_back();
        charEdges.emplace_back();
        charLengths.push_back(0.0F);
        FlattenCharPath(path, std::sqrt(area * 8.0F) * reading.tolerance);
    }
    const auto w = static_cast<float>(frame.width) * 0.5F;
    const auto h = static_cast<float>(frame.height) * 0.5F;
    bound = cv::Rect(Pixels((all.low.x + 1.0F) * w), Pixels((1.0F - all.high.y) * h),
                     Pixels((all.high.x - all.low.x) * w), Pixels((all.high.y - all.low.y) * h));
}

}  // namespace kelmo
