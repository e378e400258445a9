// SPDX-License-Identifier: GPL-3.0-or-later
#include "geometry/triangulation/delaunay.h"

#include <algorithm>
#include <cmath>
#include <opencv2/imgproc.hpp>
#include <utility>

#include "geometry/triangulation/delaunay_triangle.h"
#include "platform/host_access.h"

namespace kelmo {
namespace {

constexpr int kHalfSize = 1000000;
// About two seconds of the quadratic fallback.
constexpr size_t kMaxFallbackPoints = 10000;

// The power of two that brings the farthest coordinate to kWorkingSize at least. Subdiv2D takes a
// point for one on an edge when a triangle's area is below 1.2e-7 and would leave flat triangles
// all over small glyphs; it knows the plane only up to a few million, so more is no better. Powers
// of two keep every bit of the coordinates.
constexpr float kWorkingSize = 64;

float WorkingScale(const std::vector<cv::Point2f>& points) {
    float farthest = 0;
    for (const cv::Point2f& point : points) {
        farthest = std::max({farthest, std::abs(point.x), std::abs(point.y)});
    }
    if (!(farthest > 1e-20f) || farthest >= kWorkingSize) return 1;
    return std::exp2(std::ceil(std::log2(kWorkingSize / farthest)));
}

struct Workspace {
    cv::Subdiv2D subdivision;
    std::vector<cv::Point2f> points;
    std::vector<cv::Vec6f> found;

    void Triangulate() {
        subdivision.initDelaunay(cv::Rect(-kHalfSize, -kHalfSize, 2 * kHalfSize, 2 * kHalfSize));
        subdivision.insert(points);
        subdivision.getTriangleList(found);
    }
};

// Every fourth point first, then those between. One after the other along a contour, each point
// would make slivers that the next one undoes: a third of the time.
void Spread(std::vector<cv::Point2f>& to, const std::vector<cv::Point2f>& points) {
    to.clear();
    for (const auto& [first, step] : {std::pair<size_t, size_t>(0, 4), {2, 4}, {1, 2}}) {
        for (size_t i = first; i < points.size(); i += step) to.push_back(points[i]);
    }
}

// A workspace of this many points takes about a megabyte.
constexpr size_t kMaxKeptPoints = 4096;

void TriangulateByFallback(std::vector<Triangle2f>& out, const std::vector<cv::Point2f>& points) {
    if (points.size() > kMaxFallbackPoints) {
        LogError("GetDelaunayTriangleList: %zu points are too many for the fallback",
                 points.size());
        return;
    }
    DT::DelaunayTriangle(kHalfSize).GetTriangles(out, points);
}

}  // namespace

void GetDelaunayTriangleList(std::vector<Triangle2f>& out, const std::vector<cv::Point2f>& points) {
    // Repairs triangulate thousands of handfuls of points; the memory stays for the next one.
    thread_local Workspace workspace;
    const float scale = WorkingScale(points);
    const auto attempt = [&] {
        for (cv::Point2f& point : workspace.points) point *= scale;
        workspace.Triangulate();
    };
    try {
        try {
            Spread(workspace.points, points);
            attempt();
        } catch (const cv::Exception&) {
            // Among very many points the long ways lose themselves in rounding.
            workspace.points.assign(points.begin(), points.end());
            attempt();
        }
    } catch (const cv::Exception& error) {
        LogError("GetDelaunayTriangleList error:%s,try use DelaunayTriangle to do", error.what());
        workspace = Workspace();
        TriangulateByFallback(out, points);
        return;
    }
    out.reserve(out.size() + workspace.found.size());
    for (cv::Vec6f& corners : workspace.found) {
        corners /= scale;
        out.push_back(
            {{corners[0], corners[1]}, {corners[2], corners[3]}, {corners[4], corners[5]}});
    }
    if (points.size() > kMaxKeptPoints) workspace = Workspace();
}

}  // namespace kelmo
