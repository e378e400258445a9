// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <vector>

#include "geometry/triangulation/delaunay_points.h"
#include "geometry/triangulation/triangle2f.h"

namespace kelmo {

/// Moves corners of triangles: every corner that equals a point exactly, one point after the other,
/// as scans over the list would. Points are looked up by place. Coordinates must be finite.
class CornerMover {
public:
    /// `triangles` must live, and stay where they are, as long as the mover.
    explicit CornerMover(std::vector<Triangle2f>& triangles) : points(triangles.size()) {
        next.reserve(3 * triangles.size());
        corners.reserve(3 * triangles.size());
        for (Triangle2f& triangle : triangles) {
            for (cv::Point2f* corner : {&triangle.a, &triangle.b, &triangle.c}) {
                const size_t number = NumberOf(*corner);
                next.push_back(first[number]);
                first[number] = static_cast<int32_t>(corners.size());
                corners.push_back(corner);
            }
        }
    }

    void Move(const cv::Point2f& from, const cv::Point2f& to) {
        const int32_t source = points.Find(from);
        if (source == DelaunayPoints::kNone || first[source] < 0) return;
        const size_t target = NumberOf(to);
        if (target == static_cast<size_t>(source)) return;
        int32_t last = first[source];
        for (int32_t i = last; i >= 0; i = next[i]) {
            *corners[i] = to;
            last = i;
        }
        // They now stand with whatever stood at the target before.
        next[last] = first[target];
        first[target] = first[source];
        first[source] = -1;
    }

private:
    size_t NumberOf(const cv::Point2f& point) {
        const auto number = static_cast<size_t>(points.Add(point));
        first.resize(points.Size(), -1);
        return number;
    }

    DelaunayPoints points;
    std::vector<int32_t> first;  // by number of the point: head of a chain of corners
    std::vector<int32_t> next;
    std::vector<cv::Point2f*> corners;
};

}  // namespace kelmo
