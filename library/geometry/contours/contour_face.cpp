// SPDX-License-Identifier: GPL-3.0-or-later
#include "geometry/contours/contour_face.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <opencv2/core/utility.hpp>
#include <opencv2/imgproc.hpp>

#include "geometry/offset/edge_offset.h"
#include "geometry/triangulation/face_triangulation.h"
#include "geometry/triangulation/face_triangulation_probe.h"
#include "platform/host_access.h"

namespace kelmo {

namespace {

using Group = std::vector<Polyline>;

/// Positive for clockwise contours (y up), that is for outer ones.
float ClockwiseArea(const Polyline& points) {
    float area = 0;
    const size_t m = points.size();
    for (size_t i = 0; i < m; ++i) {
        const cv::Point2f& p = points[i];
        const cv::Point2f& next = points[(i + 1) % m];
        area += (next.y + p.y) * 0.5f * (next.x - p.x);
    }
    return area;
}

/// Points on a grid over a box, which contours take out.
class PointGrid {
public:
    PointGrid(const cv::Rect2f& box, int32_t rows, int32_t cols) {
        for (int32_t i = 0; i < rows; ++i) {
            for (int32_t j = 0; j < cols; ++j) {
                points.emplace_back(box.x + i * box.width / rows, box.y + j * box.height / cols);
            }
        }
        isTaken.resize(points.size());
    }

    /// Moves the points inside `contour` to `target`. The point that follows a moved one is passed
    /// over: it stays for a later contour, and the inner points stay apart from each other.
    void MoveInside(const ContourProbe& contour, std::vector<cv::Point2f>& target) {
        // They stand in order of x.
        const cv::Rect2f box = contour.Box();
        const auto first =
            std::lower_bound(points.begin(), points.end(), box.x,
                             [](const cv::Point2f& point, float x) { return point.x < x; });
        bool isPassed = false;
        for (size_t i = first - points.begin(); i < points.size(); ++i) {
            if (points[i].x > box.br().x) break;
            if (isTaken[i]) continue;
            isTaken[i] = !isPassed && contour.Side(points[i]) > 0;
            if (isTaken[i]) target.push_back(points[i]);
            isPassed = isTaken[i] != 0;
        }
    }

private:
    std::vector<cv::Point2f> points;
    std::vector<uint8_t> isTaken;
};

void MakeClockwise(Triangle2f& t) {
    if ((t.c.x - t.b.x) * (t.b.y - t.a.y) - (t.b.x - t.a.x) * (t.c.y - t.b.y) < 0) {
        std::swap(t.a, t.b);
    }
}

std::vector<Triangle2f> FillGroup(const Group& group, PointGrid grid) {
    std::vector<const Polyline*> outers;
    std::vector<const Polyline*> holes;
    for (const Polyline& contour : group) {
        if (contour.empty()) continue;
        if (ClockwiseArea(contour) > 0) {
            outers.push_back(&contour);
        } else {
            holes.push_back(&contour);
        }
    }
    std::vector<Triangle2f> triangles;
    for (const Polyline* outer : outers) {
        const ContourProbe probe(FinitePoints(*outer));
        std::vector<cv::Point2f> points = *outer;
        std::vector<const Polyline*> inner;
        for (const Polyline* hole : holes) {
            if (IsFinite(hole->front()) && probe.Side(hole->front()) > 0) {
                points.insert(points.end(), hole->begin(), hole->end());
                inner.push_back(hole);
            }
        }
        grid.MoveInside(probe, points);
        Triangulate(triangles, points, *outer, inner);
    }
    std::for_each(triangles.begin(), triangles.end(), MakeClockwise);
    return triangles;
}

// What one group comes to. Groups know nothing of each other.
struct ParsedGroup {
    std::vector<std::vector<EdgeCoreInfo>> cores;
    std::vector<Triangle2f> triangles;
    std::vector<cv::Point2f> hull;
    cv::RotatedRect rect;  // the smallest around the group
};

std::vector<cv::Point2f> PointsOf(const Group& group) {
    std::vector<cv::Point2f> points;
    for (const Polyline& contour : group) {
        points.insert(points.end(), contour.begin(), contour.end());
    }
    return points;
}

// Groups of very different sizes: each is handed out alone, so that no thread waits long.
class ParallelGroups : public cv::ParallelLoopBody {
public:
    ParallelGroups(const std::vector<Group>& from, cv::Size cells, std::vector<ParsedGroup>& to)
        : groups(from), gridCells(cells), parsed(to) {}

    void operator()(const cv::Range& range) const override {
        for (int i = range.start; i < range.end; ++i) Parse(groups[i], parsed[i]);
    }

private:
    void Parse(const Group& group, ParsedGroup& result) const {
        for (const Polyline& contour : group) result.cores.push_back(OffsetDirections(contour));
        const std::vector<cv::Point2f> points = PointsOf(group);
        if (points.empty()) return;
        cv::convexHull(points, result.hull);
        result.rect = cv::minAreaRect(result.hull);
        result.triangles = FillGroup(
            group, PointGrid(result.rect.boundingRect2f(), gridCells.height, gridCells.width));
    }

    const std::vector<Group>& groups;
    cv::Size gridCells;  // columns and rows, none without a grid
    std::vector<ParsedGroup>& parsed;
};

// Below so many points waking a second thread takes longer than it saves.
constexpr size_t kMinPointsForThreads = 500;

void ParseGroups(Contours& contours, cv::Size gridCells) {
    size_t pointCount = 0;
    for (const Group& group : contours.m_Points) {
        for (const Polyline& contour : group) pointCount += contour.size();
    }
    std::vector<ParsedGroup> parsed(contours.m_Points.size());
    const ParallelGroups body(contours.m_Points, gridCells, parsed);
    const cv::Range range(0, static_cast<int>(parsed.size()));
    if (pointCount < kMinPointsForThreads) {
        body(range);
    } else {
        cv::parallel_for_(range, body, range.size());
    }
    std::vector<cv::Point2f> hulls;
    for (ParsedGroup& group : parsed) {
        contours.m_EdgeCores.push_back(std::move(group.cores));
        contours.m_Triangles.push_back(std::move(group.triangles));
        contours.m_GroupRects.push_back(group.rect);
        if (group.hull.empty()) continue;
        hulls.insert(hulls.end(), group.hull.begin(), group.hull.end());
        // The upright box of the rectangle counts for the sizes.
        const cv::Rect2f box = group.rect.boundingRect2f();
        const float longer = std::max(box.width, box.height);
        contours.m_MinGroupSize = std::min(contours.m_MinGroupSize, longer);
        contours.m_MaxGroupSize = std::max(contours.m_MaxGroupSize, longer);
    }
    if (!hulls.empty()) contours.m_AllRect = cv::minAreaRect(hulls);
}

}  // namespace

void ContourFace::ParseContours(Contours& contours, bool grid, int32_t gridRows,
                                int32_t gridCols) const {
    contours.m_Triangles.clear();
    contours.m_GroupRects.clear();
    contours.m_EdgeCores.clear();
    contours.m_AllRect = cv::RotatedRect();
    contours.m_MinGroupSize = std::numeric_limits<float>::max();
    contours.m_MaxGroupSize = std::numeric_limits<float>::lowest();
    try {
        const auto bounded = [](int32_t count) { return std::clamp(count, 0, kMaxGridSide); };
        ParseGroups(contours, grid ? cv::Size(bounded(gridCols), bounded(gridRows)) : cv::Size());
    } catch (const cv::Exception& error) {
        LogError("ParseContours error:%s", error.what());
        contours.ClearDerived();
    }
}

}  // namespace kelmo
