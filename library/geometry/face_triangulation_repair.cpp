// SPDX-License-Identifier: GPL-3.0-or-later
#include "geometry/face_triangulation_repair.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numbers>
#include <optional>

#include "geometry/delaunay.h"

namespace kelmo {
namespace {

constexpr double kDegrees = 180 / std::numbers::pi;
// Degrees by which the fan of a point may fall short of the contour's angle through rounding.
constexpr double kFanTolerance = 0.0001;

double Cross(const cv::Point2f& u, const cv::Point2f& v) {
    return static_cast<double>(u.x) * v.y - static_cast<double>(u.y) * v.x;
}

double Dot(const cv::Point2f& u, const cv::Point2f& v) {
    return static_cast<double>(u.x) * v.x + static_cast<double>(u.y) * v.y;
}

double Lengths(const cv::Point2f& u, const cv::Point2f& v) {
    return std::hypot(u.x, u.y) * std::hypot(v.x, v.y);
}

// Degrees, 0 to 180.
double CosineAngle(const cv::Point2f& u, const cv::Point2f& v) {
    return std::acos(std::clamp(Dot(u, v) / Lengths(u, v), -1.0, 1.0)) * kDegrees;
}

// Degrees, -90 to 90.
double SineAngle(const cv::Point2f& u, const cv::Point2f& v) {
    return std::asin(std::clamp(Cross(u, v) / Lengths(u, v), -1.0, 1.0)) * kDegrees;
}

std::array<cv::Point2f, 3> Corners(const Triangle2f& triangle) {
    return {triangle.a, triangle.b, triangle.c};
}

bool Crosses(const Triangle2f& triangle, const cv::Point2f& a, const cv::Point2f& b) {
    const std::array<cv::Point2f, 3> corners = Corners(triangle);
    for (size_t i = 0; i < 3; ++i) {
        const cv::Point2f& p = corners[i];
        const cv::Point2f& q = corners[(i + 1) % 3];
        if (Cross(b - a, p - a) * Cross(b - a, q - a) < 0 &&
            Cross(q - p, a - p) * Cross(q - p, b - p) < 0) {
            return true;
        }
    }
    return false;
}

enum class Turn { kClockwise, kCounterClockwise };

// Of the corners other than `center` of the triangles at `center` that lack `other`, the first one
// with the smallest angle from `direction`, turning as told.
std::optional<cv::Point2f> NearestByAngle(const FaceTriangleList& triangles,
                                          const cv::Point2f& center, int32_t other,
                                          const cv::Point2f& direction, Turn turn) {
    std::optional<cv::Point2f> nearest;
    double smallest = std::numeric_limits<double>::max();
    triangles.ForEachAt(triangles.NumberOf(center), [&](int32_t place) {
        const std::array<int32_t, 3>& numbers = triangles.CornersOf(place);
        if (std::find(numbers.begin(), numbers.end(), other) != numbers.end()) return;
        for (const cv::Point2f& corner : Corners(triangles.At(place))) {
            if (corner == center) continue;
            double angle = CosineAngle(corner - center, direction);
            const double side = Cross(corner - center, direction);
            if (static_cast<float>(turn == Turn::kClockwise ? side : -side) < 0) {
                angle = 360 - angle;
            }
            if (angle < smallest) {
                smallest = angle;
                nearest = corner;
            }
        }
    });
    return nearest;
}

// Erases what crosses the edge; its corners on the material's side, and the edge's ends behind.
std::vector<cv::Point2f> ClearEdge(FaceTriangleList& triangles, const cv::Point2f& a,
                                   const cv::Point2f& b) {
    std::vector<cv::Point2f> freed;
    triangles.ForEachNear(a, b, [&](int32_t place) {
        if (!Crosses(triangles.At(place), a, b)) return;
        triangles.Erase(place);
        for (const cv::Point2f& corner : Corners(triangles.At(place))) {
            if (corner == a || corner == b) continue;
            if (static_cast<float>(Cross(corner - b, b - a)) >= 0) freed.push_back(corner);
        }
    });
    if (!freed.empty()) freed.insert(freed.end(), {a, b});
    return freed;
}

// For an edge along which nothing crosses: the edge and the two corners that close the gap beside
// it.
std::vector<cv::Point2f> GapAtEdge(const FaceTriangleList& triangles, const cv::Point2f& a,
                                   const cv::Point2f& b) {
    std::vector<cv::Point2f> gap{a, b};
    const auto atStart =
        NearestByAngle(triangles, a, triangles.NumberOf(b), b - a, Turn::kClockwise);
    if (!atStart) return gap;
    gap.push_back(*atStart);
    // From the edge's end the same gap is swept the other way round.
    const auto atEnd =
        NearestByAngle(triangles, b, triangles.NumberOf(a), *atStart - b, Turn::kCounterClockwise);
    if (atEnd) gap.push_back(*atEnd);
    return gap;
}

void RecoverEdge(FaceTriangleList& triangles, const cv::Point2f& a, const cv::Point2f& b) {
    std::vector<cv::Point2f> points = ClearEdge(triangles, a, b);
    if (points.empty()) points = GapAtEdge(triangles, a, b);
    if (points.size() < 3) return;
    std::vector<Triangle2f> added;
    GetDelaunayTriangleList(added, points);
    triangles.Append(added);
}

bool IsCarved(const Triangle2f& triangle, const ContourProbe& probe, bool isOuter) {
    const auto& [a, b, c] = triangle;
    const cv::Point2f ab = (a + b) / 2;
    const cv::Point2f ac = (a + c) / 2;
    const cv::Point2f bc = (b + c) / 2;
    const int wrongSide = isOuter ? -1 : 1;
    return probe.Side((a + ab + ac) / 3) == wrongSide ||
           probe.Side((b + ab + bc) / 3) == wrongSide || probe.Side((c + ac + bc) / 3) == wrongSide;
}

// The triangles around one point of a contour.
struct Fan {
    std::vector<cv::Point2f> corners;  ///< but for the point itself and its neighbours
    double cosineSum = 0;              ///< degrees
    double sineSum = 0;                ///< degrees
    bool hasNext = false;              ///< a triangle stands on the edge to the next point
};

struct ContourPoint {
    cv::Point2f previous;
    cv::Point2f point;
    cv::Point2f next;
};

void AddToFan(Fan& fan, const Triangle2f& triangle, const ContourPoint& at, bool isOuter) {
    std::array<cv::Point2f, 2> others;
    size_t count = 0;
    for (const cv::Point2f& corner : Corners(triangle)) {
        if (corner != at.point && count < 2) others[count++] = corner;
    }
    for (size_t i = 0; i < count; ++i) {
        if (others[i] == at.next) fan.hasNext = true;
        if (others[i] != at.next && others[i] != at.previous) fan.corners.push_back(others[i]);
    }
    const cv::Point2f first = others[0] - at.point;
    const cv::Point2f second = others[1] - at.point;
    const double sine = SineAngle(first, second);
    fan.cosineSum += CosineAngle(first, second);
    fan.sineSum += isOuter ? std::abs(90 - sine) : sine + 90;
}

// Whether the triangles fill the contour's inner angle at the point, measured in two ways.
bool IsComplete(const Fan& fan, const ContourPoint& at, bool isOuter) {
    const cv::Point2f toNext = at.next - at.point;
    const cv::Point2f toPrevious = at.previous - at.point;
    const double turn = Cross(toNext, at.point - at.previous);
    double angle1 = CosineAngle(toNext, toPrevious);
    if (isOuter ? turn < 0 : turn > 0) angle1 = 360 - angle1;
    double angle2 = -SineAngle(toPrevious, toNext);
    if (!isOuter) angle2 = -angle2;
    if (angle2 < 0) angle2 += 360;
    return !(angle1 > fan.cosineSum + kFanTolerance) && !(angle2 > fan.sineSum + kFanTolerance);
}

// The open ends of the fan, and the point: what a new triangulation has to join.
std::vector<cv::Point2f> GapInFan(const Fan& fan, const ContourPoint& at) {
    std::vector<cv::Point2f> gap;
    for (const cv::Point2f& corner : fan.corners) {
        if (std::count(fan.corners.begin(), fan.corners.end(), corner) == 1) gap.push_back(corner);
    }
    gap.push_back(at.point);
    if (gap.size() == 2) gap.push_back(at.next);
    return gap;
}

}  // namespace

void RecoverEdges(FaceTriangleList& triangles, const Polyline& contour) {
    for (size_t i = 0; i < contour.size(); ++i) {
        const cv::Point2f& a = contour[i];
        const cv::Point2f& b = contour[(i + 1) % contour.size()];
        if (a == b || triangles.HasEdge(triangles.NumberOf(a), triangles.NumberOf(b))) continue;
        RecoverEdge(triangles, a, b);
    }
}

void CarveTriangles(FaceTriangleList& triangles, const ContourProbe& probe, bool isOuter,
                    int32_t firstPlace) {
    for (int32_t place = firstPlace; place < triangles.PlaceCount(); ++place) {
        if (!triangles.IsErased(place) && IsCarved(triangles.At(place), probe, isOuter)) {
            triangles.Erase(place);
        }
    }
}

void CarveTriangles(std::vector<Triangle2f>& triangles, const ContourProbe& probe, bool isOuter) {
    std::erase_if(triangles,
                  [&](const Triangle2f& triangle) { return IsCarved(triangle, probe, isOuter); });
}

void RepairVertices(FaceTriangleList& triangles, const Polyline& contour, const ContourProbe& probe,
                    bool isOuter) {
    const size_t count = contour.size();
    std::vector<Triangle2f> collected;
    std::vector<Triangle2f> refilled;
    Fan fan;
    for (size_t i = 0; i < count; ++i) {
        const ContourPoint at{contour[(i + count - 1) % count], contour[i],
                              contour[(i + 1) % count]};
        fan.corners.clear();
        fan.cosineSum = fan.sineSum = 0;
        fan.hasNext = false;
        triangles.ForEachAt(triangles.NumberOf(at.point), [&](int32_t place) {
            AddToFan(fan, triangles.At(place), at, isOuter);
        });
        if (!fan.hasNext || IsComplete(fan, at, isOuter)) continue;
        const std::vector<cv::Point2f> gap = GapInFan(fan, at);
        if (gap.size() < 3) continue;
        refilled.clear();
        GetDelaunayTriangleList(refilled, gap);
        CarveTriangles(refilled, probe, isOuter);
        collected.insert(collected.end(), refilled.begin(), refilled.end());
    }
    triangles.Append(collected);
}

}  // namespace kelmo
