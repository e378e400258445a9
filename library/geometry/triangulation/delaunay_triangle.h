// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <list>
#include <opencv2/core/types.hpp>
#include <vector>

#include "geometry/triangulation/triangle2f.h"

/// An unconstrained Delaunay triangulation that takes any points: the fallback for those that
/// OpenCV refuses. Bowyer and Watson's incremental method over a plain list, quadratic in time.
/// Values without shared state; one thread at a time for each object.
namespace kelmo::DT {

using Vertex = cv::Point3d;  ///< z stays 0

/// Same place: x and y are compared exactly.
bool IsSame(const Vertex& left, const Vertex& right);

class Edge {
public:
    Edge() = default;
    Edge(const Vertex& first, const Vertex& second) : start(first), end(second) {}
    virtual ~Edge() = default;
    Edge(const Edge&) = default;
    Edge& operator=(const Edge&) = default;

    Vertex start;
    Vertex end;
    bool bad = false;  ///< shared by two triangles that give way to a new point
};

class Triangle {
public:
    Triangle(const Vertex& first, const Vertex& second, const Vertex& third);
    virtual ~Triangle() = default;
    Triangle(const Triangle&) = default;
    Triangle& operator=(const Triangle&) = default;

    Vertex a;
    Vertex b;
    Vertex c;
    std::array<Edge, 3> edges;  ///< (a, b), (b, c), (c, a)
};

class DelaunayTriangle {
public:
    /// All points must lie within +-`halfSize` in x and y. Triangles run clockwise, y up.
    explicit DelaunayTriangle(double halfSize);
    virtual ~DelaunayTriangle() = default;
    DelaunayTriangle(const DelaunayTriangle&) = default;
    DelaunayTriangle& operator=(const DelaunayTriangle&) = default;

    void AddPoint(const Vertex& point);

    /// Inserts `points` in their order and appends the triangles that do not touch the rectangle
    /// around everything.
    void GetTriangles(std::vector<Triangle2f>& out, const std::vector<cv::Point2f>& points);

private:
    bool TouchesCorner(const Triangle& triangle) const;

    std::array<Vertex, 4> corners;
    std::list<Triangle> triangles;
};

}  // namespace kelmo::DT
