// SPDX-License-Identifier: GPL-3.0-or-later
#include "geometry/triangulation/delaunay_triangle.h"

#include <algorithm>

namespace kelmo::DT {
namespace {

// Negative when `point` lies in the circle through the corners of a clockwise triangle. Rounded to
// float, so that a point on the circle, but for rounding, leaves the triangle alone.
float InCircle(const Triangle& triangle, const Vertex& point) {
    const Vertex a = triangle.a - point;
    const Vertex b = triangle.b - point;
    const Vertex c = triangle.c - point;
    const double value = (a.x * a.x + a.y * a.y) * (b.x * c.y - b.y * c.x) +
                         (b.x * b.x + b.y * b.y) * (c.x * a.y - c.y * a.x) +
                         (c.x * c.x + c.y * c.y) * (a.x * b.y - a.y * b.x);
    return static_cast<float>(value);
}

bool IsSameEdge(const Edge& left, const Edge& right) {
    return (IsSame(left.start, right.start) && IsSame(left.end, right.end)) ||
           (IsSame(left.start, right.end) && IsSame(left.end, right.start));
}

// Marks `edge` and its twin among the triangles from `next` on, when there is one.
void MarkShared(Edge& edge, std::list<Triangle>::iterator next, std::list<Triangle>::iterator end) {
    for (; next != end; ++next) {
        for (Edge& other : next->edges) {
            if (!IsSameEdge(edge, other)) continue;
            edge.bad = true;
            other.bad = true;
            return;
        }
    }
}

cv::Point2f ToFloat(const Vertex& vertex) {
    return {static_cast<float>(vertex.x), static_cast<float>(vertex.y)};
}

}  // namespace

bool IsSame(const Vertex& left, const Vertex& right) {
    return left.x == right.x && left.y == right.y;
}

Triangle::Triangle(const Vertex& first, const Vertex& second, const Vertex& third)
    : a(first),
      b(second),
      c(third),
      edges{Edge(first, second), Edge(second, third), Edge(third, first)} {}

DelaunayTriangle::DelaunayTriangle(double halfSize)
    : corners{Vertex(-halfSize, -halfSize, 0), Vertex(halfSize, -halfSize, 0),
              Vertex(-halfSize, halfSize, 0), Vertex(halfSize, halfSize, 0)} {
    triangles.emplace_back(corners[0], corners[2], corners[3]);
    triangles.emplace_back(corners[0], corners[3], corners[1]);
}

void DelaunayTriangle::AddPoint(const Vertex& point) {
    std::list<Triangle> badTriangles;
    for (auto it = triangles.begin(); it != triangles.end();) {
        const auto current = it++;
        if (InCircle(*current, point) < 0) {
            badTriangles.splice(badTriangles.end(), triangles, current);
        }
    }
    for (auto it = badTriangles.begin(); it != badTriangles.end(); ++it) {
        for (Edge& edge : it->edges) {
            if (!edge.bad) MarkShared(edge, std::next(it), badTriangles.end());
        }
    }
    for (const Triangle& triangle : badTriangles) {
        for (const Edge& edge : triangle.edges) {
            if (!edge.bad) triangles.emplace_back(point, edge.start, edge.end);
        }
    }
}

void DelaunayTriangle::GetTriangles(std::vector<Triangle2f>& out,
                                    const std::vector<cv::Point2f>& points) {
    for (const cv::Point2f& point : points) AddPoint(Vertex(point.x, point.y, 0));
    for (const Triangle& triangle : triangles) {
        if (TouchesCorner(triangle)) continue;
        out.push_back({ToFloat(triangle.a), ToFloat(triangle.b), ToFloat(triangle.c)});
    }
}

bool DelaunayTriangle::TouchesCorner(const Triangle& triangle) const {
    return std::any_of(corners.begin(), corners.end(), [&](const Vertex& corner) {
        return IsSame(triangle.a, corner) || IsSame(triangle.b, corner) ||
               IsSame(triangle.c, corner);
    });
}

}  // namespace kelmo::DT
