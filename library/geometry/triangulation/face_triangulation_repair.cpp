// SPDX-License-Identifier: GPL-3.0-or-later
#include "geometry/triangulation/face_triangulation_repair.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numbers>
#include <optional>

#include "geometry/triangulation/delaunay.h"

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
    triangles.ForEachNear(a, b, 0, [&](int32_t place) {
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

// A step without length has no direction; the contour is the same without it.
Polyline WithoutRepeats(const Polyline& points) {
    Polyline kept;
    kept.reserve(points.size());
    for (const cv::Point2f& point : points) {
        if (IsFinite(point) && (kept.empty() || point != kept.back())) kept.push_back(point);
    }
    while (kept.size() > 1 && kept.front() == kept.back()) kept.pop_back();
    return kept;
}

bool IsCarved(const Triangle2f& triangle, const FaceContour& contour) {
    const ContourProbe& probe = contour.probe;
    const auto& [a, b, c] = triangle;
    const cv::Point2f ab = (a + b) / 2;
    const cv::Point2f ac = (a + c) / 2;
    const cv::Point2f bc = (b + c) / 2;
    const int wrongSide = contour.isOuter ? -1 : 1;
    return probe.Side((a + ab + ac) / 3) == wrongSide ||
           probe.Side((b + ab + bc) / 3) == wrongSide || probe.Side((c + ac + bc) / 3) == wrongSide;
}

struct ContourPoint {
    cv::Point2f previous;
    cv::Point2f point;
    cv::Point2f next;
};

// The triangles around one point of a contour: for each its two corners other than the point.
struct Fan {
    struct Blade {
        cv::Point2f first;
        cv::Point2f second;
    };
    std::vector<Blade> blades;
    std::vector<int32_t> corners;       ///< numbers of all corners, sorted
    std::vector<cv::Point2f> openEnds;  ///< corners of one blade alone, but for the neighbours
};

uint64_t Scatter(int32_t number) {
    uint64_t value = static_cast<uint64_t>(number) * 0x9E3779B97F4A7C15u;
    value = (value ^ value >> 30) * 0xBF58476D1CE4E5B9u;
    return value ^ value >> 31;
}

Fan::Blade BladeOf(const Triangle2f& triangle, const cv::Point2f& point) {
    if (triangle.a == point) return {triangle.b, triangle.c};
    if (triangle.b == point) return {triangle.a, triangle.c};
    return {triangle.a, triangle.b};
}

// Whether something may have to be joined at a point: a triangle stands on the edge to the next
// point, and the triangles are not one run from neighbour to neighbour, which has no open ends.
// Most points end here.
bool MayHaveGap(const FaceTriangleList& triangles, const FaceContour& contour, size_t index) {
    const size_t count = contour.line.size();
    const int32_t center = contour.NumberAt(index, triangles);
    const int32_t next = contour.NumberAt((index + 1) % count, triangles);
    const int32_t previous = contour.NumberAt((index + count - 1) % count, triangles);
    // Corners that occur twice cancel out, so that a fan without open ends leaves its neighbours.
    uint64_t left = Scatter(next) ^ Scatter(previous);
    const uint64_t ofCenter = Scatter(center);
    bool hasNext = false;
    triangles.ForEachAt(center, [&](int32_t place) {
        const auto& [a, b, c] = triangles.CornersOf(place);
        left ^= Scatter(a) ^ Scatter(b) ^ Scatter(c) ^ ofCenter;
        hasNext = hasNext || a == next || b == next || c == next;
    });
    return hasNext && left != 0;
}

void CollectBlades(Fan& fan, const FaceTriangleList& triangles, const FaceContour& contour,
                   size_t index) {
    fan.blades.clear();
    fan.corners.clear();
    triangles.ForEachAt(contour.NumberAt(index, triangles), [&](int32_t place) {
        fan.blades.push_back(BladeOf(triangles.At(place), contour.line[index]));
        const std::array<int32_t, 3>& numbers = triangles.CornersOf(place);
        fan.corners.insert(fan.corners.end(), numbers.begin(), numbers.end());
    });
    std::sort(fan.corners.begin(), fan.corners.end());
}

bool IsOnceInFan(const Fan& fan, int32_t corner) {
    const auto [first, last] = std::equal_range(fan.corners.begin(), fan.corners.end(), corner);
    return last - first == 1;
}

void CollectOpenEnds(Fan& fan, const FaceTriangleList& triangles, const ContourPoint& at) {
    fan.openEnds.clear();
    for (const Fan::Blade& blade : fan.blades) {
        for (const cv::Point2f& corner : {blade.first, blade.second}) {
            if (corner == at.next || corner == at.previous) continue;
            if (IsOnceInFan(fan, triangles.NumberOf(corner))) fan.openEnds.push_back(corner);
        }
    }
}

// Whether the triangles fill the contour's inner angle at the point, measured in two ways.
bool IsComplete(const Fan& fan, const ContourPoint& at, bool isOuter) {
    double cosineSum = 0;
    double sineSum = 0;
    for (const Fan::Blade& blade : fan.blades) {
        const cv::Point2f first = blade.first - at.point;
        const cv::Point2f second = blade.second - at.point;
        const double sine = SineAngle(first, second);
        cosineSum += CosineAngle(first, second);
        sineSum += isOuter ? std::abs(90 - sine) : sine + 90;
    }
    const cv::Point2f toNext = at.next - at.point;
    const cv::Point2f toPrevious = at.previous - at.point;
    const double turn = Cross(toNext, at.point - at.previous);
    double angle1 = CosineAngle(toNext, toPrevious);
    if (isOuter ? turn < 0 : turn > 0) angle1 = 360 - angle1;
    double angle2 = -SineAngle(toPrevious, toNext);
    if (!isOuter) angle2 = -angle2;
    if (angle2 < 0) angle2 += 360;
    return !(angle1 > cosineSum + kFanTolerance) && !(angle2 > sineSum + kFanTolerance);
}

// What a new triangulation has to join: the open ends of the fan, and the point.
std::vector<cv::Point2f> GapInFan(const Fan& fan, const ContourPoint& at) {
    std::vector<cv::Point2f> gap = fan.openEnds;
    gap.push_back(at.point);
    if (gap.size() == 2) gap.push_back(at.next);
    return gap;
}

}  // namespace

FaceContour::FaceContour(const Polyline& points, bool outer)
    : line(WithoutRepeats(points)), probe(line), isOuter(outer) {}

void FaceContour::Number(const FaceTriangleList& triangles) {
    numbers.clear();
    numbers.reserve(line.size());
    for (const cv::Point2f& point : line) numbers.push_back(triangles.NumberOf(point));
}

void RecoverEdges(FaceTriangleList& triangles, const FaceContour& contour) {
    const size_t count = contour.line.size();
    for (size_t i = 0; i < count; ++i) {
        const size_t next = i + 1 == count ? 0 : i + 1;
        if (triangles.HasEdge(contour.NumberAt(i, triangles), contour.NumberAt(next, triangles))) {
            continue;
        }
        if (contour.line[i] == contour.line[next]) continue;  // a contour of a single point
        RecoverEdge(triangles, contour.line[i], contour.line[next]);
    }
}

void CarveTriangles(FaceTriangleList& triangles, const FaceContour& contour, int32_t firstPlace) {
    const auto carve = [&](int32_t place) {
        if (IsCarved(triangles.At(place), contour)) triangles.Erase(place);
    };
    if (!contour.isOuter) {
        const cv::Rect2f box = contour.probe.Box();
        triangles.ForEachNear(box.tl(), box.br(), firstPlace, carve);
        return;
    }
    for (int32_t place = firstPlace; place < triangles.PlaceCount(); ++place) {
        if (!triangles.IsErased(place)) carve(place);
    }
}

void CarveTriangles(std::vector<Triangle2f>& triangles, const FaceContour& contour) {
    std::erase_if(triangles,
                  [&](const Triangle2f& triangle) { return IsCarved(triangle, contour); });
}

void RepairVertices(FaceTriangleList& triangles, const FaceContour& contour) {
    const Polyline& line = contour.line;
    const size_t count = line.size();
    std::vector<Triangle2f> collected;
    std::vector<Triangle2f> refilled;
    Fan fan;
    for (size_t i = 0; i < count; ++i) {
        // Without an open end there is nothing to join, whatever the angles say.
        if (!MayHaveGap(triangles, contour, i)) continue;
        CollectBlades(fan, triangles, contour, i);
        const ContourPoint at{line[(i + count - 1) % count], line[i], line[(i + 1) % count]};
        CollectOpenEnds(fan, triangles, at);
        if (fan.openEnds.empty() || IsComplete(fan, at, contour.isOuter)) continue;
        refilled.clear();
        GetDelaunayTriangleList(refilled, GapInFan(fan, at));
        CarveTriangles(refilled, contour);
        collected.insert(collected.end(), refilled.begin(), refilled.end());
    }
    triangles.Append(collected);
}

}  // namespace kelmo
