// SPDX-License-Identifier: GPL-3.0-or-later
#include "geometry/face_triangulation.h"

#include <algorithm>
#include <cmath>

#include "geometry/delaunay.h"
#include "geometry/face_triangulation_list.h"
#include "geometry/face_triangulation_probe.h"
#include "geometry/face_triangulation_repair.h"

namespace kelmo {
namespace {

bool IsFinite(const cv::Point2f& point) {
    return std::isfinite(point.x) && std::isfinite(point.y);
}

Polyline FinitePoints(const Polyline& points) {
    Polyline finite;
    finite.reserve(points.size());
    for (const cv::Point2f& point : points) {
        if (IsFinite(point)) finite.push_back(point);
    }
    return finite;
}

// A step without length has no direction; the contour is the same without it.
Polyline WithoutRepeats(const Polyline& points) {
    Polyline kept = FinitePoints(points);
    kept.erase(std::unique(kept.begin(), kept.end()), kept.end());
    while (kept.size() > 1 && kept.front() == kept.back()) kept.pop_back();
    return kept;
}

struct FaceContour {
    explicit FaceContour(const Polyline& points) : line(WithoutRepeats(points)), probe(line) {}
    Polyline line;
    ContourProbe probe;
};

}  // namespace

void Triangulate(std::vector<Triangle2f>& out, const std::vector<cv::Point2f>& points,
                 const Polyline& outer, const std::vector<const Polyline*>& holes) {
    const Polyline finite = FinitePoints(points);
    if (finite.size() < 3) return;
    const FaceContour outerContour(outer);
    if (outerContour.line.size() < 3) return;
    std::vector<FaceContour> holeContours;
    holeContours.reserve(holes.size());
    for (const Polyline* hole : holes) holeContours.emplace_back(*hole);

    FaceTriangleList triangles(finite.size());
    std::vector<Triangle2f> unconstrained;
    GetDelaunayTriangleList(unconstrained, finite);
    triangles.Append(unconstrained);

    int32_t firstPlace = 0;  // what the first round left has passed all probes already
    for (int round = 0; round < 2; ++round) {
        for (const FaceContour& hole : holeContours) RecoverEdges(triangles, hole.line);
        RecoverEdges(triangles, outerContour.line);
        CarveTriangles(triangles, outerContour.probe, true, firstPlace);
        for (const FaceContour& hole : holeContours) {
            CarveTriangles(triangles, hole.probe, false, firstPlace);
        }
        firstPlace = triangles.PlaceCount();
    }

    RepairVertices(triangles, outerContour.line, outerContour.probe, true);
    for (const FaceContour& hole : holeContours) {
        RepairVertices(triangles, hole.line, hole.probe, false);
    }
    triangles.MoveTo(out);
}

}  // namespace kelmo
