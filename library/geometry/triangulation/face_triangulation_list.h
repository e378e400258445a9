// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "geometry/triangulation/delaunay_points.h"
#include "geometry/triangulation/triangle2f.h"

namespace kelmo {

/// The triangles of one face while they are repaired: an ordered list to which triangles are added
/// at the end and from which they are erased, with two indexes. One finds the triangles at a point,
/// the other those whose box meets a box. Both give triangles in list order. Coordinates must be
/// finite. One thread at a time.
class FaceTriangleList {
public:
    explicit FaceTriangleList(size_t expectedPoints);

    void Append(const Triangle2f& triangle);
    void Append(const std::vector<Triangle2f>& added);

    /// Number of places; erased triangles keep theirs.
    int32_t PlaceCount() const { return static_cast<int32_t>(triangles.size()); }
    bool IsErased(int32_t place) const { return erased[place] != 0; }
    void Erase(int32_t place) { erased[place] = 1; }
    const Triangle2f& At(int32_t place) const { return triangles[place]; }
    /// Numbers of the three corners.
    const std::array<int32_t, 3>& CornersOf(int32_t place) const { return corners[place]; }

    /// The number of a point, or `DelaunayPoints::kNone` when no triangle ever had it.
    int32_t NumberOf(const cv::Point2f& point) const { return points.Find(point); }

    /// Calls `use(place)` for each triangle that has the point of this number as a corner.
    template <typename Use>
    void ForEachAt(int32_t number, Use&& use) const {
        if (number == DelaunayPoints::kNone) return;
        for (int32_t entry = firstEntry[number]; entry >= 0; entry = nextEntry[entry]) {
            if (!IsErased(entry / 3)) use(entry / 3);
        }
    }

    /// Whether a triangle has both points as corners.
    bool HasEdge(int32_t first, int32_t second) const;

    /// Calls `use(place)` for each triangle from `firstPlace` on whose box meets the box around `a`
    /// and `b`.
    template <typename Use>
    void ForEachNear(const cv::Point2f& a, const cv::Point2f& b, int32_t firstPlace,
                     Use&& use) const {
        const Box wanted = Box::Around(a, b);
        for (size_t block = firstPlace / kBlockSize; block < blocks.size(); ++block) {
            if (!blocks[block].Meets(wanted)) continue;
            const auto first = static_cast<int32_t>(block * kBlockSize);
            const int32_t end = std::min<int32_t>(first + kBlockSize, PlaceCount());
            for (int32_t place = std::max(first, firstPlace); place < end; ++place) {
                if (!IsErased(place) && Box::Around(triangles[place]).Meets(wanted)) use(place);
            }
        }
    }

    /// Appends what is left, in order.
    void MoveTo(std::vector<Triangle2f>& out) const;

private:
    struct Box {
        float minX, maxX, minY, maxY;
        static Box Around(const cv::Point2f& a, const cv::Point2f& b);
        static Box Around(const Triangle2f& triangle);
        bool Meets(const Box& other) const {
            return minX <= other.maxX && other.minX <= maxX && minY <= other.maxY &&
                   other.minY <= maxY;
        }
        void Include(const Box& other);
    };

    // Neighbours in the list are mostly neighbours in the plane, so one box for a run of them
    // spares looking at each.
    static constexpr int32_t kBlockSize = 64;

    DelaunayPoints points;
    std::vector<Triangle2f> triangles;
    std::vector<std::array<int32_t, 3>> corners;
    std::vector<uint8_t> erased;
    std::vector<Box> blocks;
    // Entry 3 * place + corner: chains of the triangles at each point.
    std::vector<int32_t> nextEntry;
    std::vector<int32_t> firstEntry;
    std::vector<int32_t> lastEntry;
};

}  // namespace kelmo
