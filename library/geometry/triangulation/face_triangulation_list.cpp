// SPDX-License-Identifier: GPL-3.0-or-later
#include "geometry/triangulation/face_triangulation_list.h"

#include <algorithm>

namespace kelmo {

FaceTriangleList::Box FaceTriangleList::Box::Around(const cv::Point2f& a, const cv::Point2f& b) {
    return {std::min(a.x, b.x), std::max(a.x, b.x), std::min(a.y, b.y), std::max(a.y, b.y)};
}

FaceTriangleList::Box FaceTriangleList::Box::Around(const Triangle2f& triangle) {
    Box box = Around(triangle.a, triangle.b);
    box.Include({triangle.c.x, triangle.c.x, triangle.c.y, triangle.c.y});
    return box;
}

void FaceTriangleList::Box::Include(const Box& other) {
    minX = std::min(minX, other.minX);
    maxX = std::max(maxX, other.maxX);
    minY = std::min(minY, other.minY);
    maxY = std::max(maxY, other.maxY);
}

FaceTriangleList::FaceTriangleList(size_t expectedPoints) : points(expectedPoints) {
    const size_t expected = expectedPoints * 5 / 2;  // two for each point, and repairs
    triangles.reserve(expected);
    corners.reserve(expected);
    erased.reserve(expected);
    nextEntry.reserve(3 * expected);
    firstEntry.reserve(expectedPoints);
    lastEntry.reserve(expectedPoints);
}

void FaceTriangleList::Append(const Triangle2f& triangle) {
    const int32_t place = PlaceCount();
    if (place % kBlockSize == 0) {
        blocks.push_back(Box::Around(triangle));
    } else {
        blocks.back().Include(Box::Around(triangle));
    }
    triangles.push_back(triangle);
    erased.push_back(0);
    corners.push_back({points.Add(triangle.a), points.Add(triangle.b), points.Add(triangle.c)});
    if (firstEntry.size() < points.Size()) {
        firstEntry.resize(points.Size(), -1);
        lastEntry.resize(points.Size(), -1);
    }
    for (int32_t corner = 0; corner < 3; ++corner) {
        const int32_t number = corners.back()[corner];
        const int32_t entry = 3 * place + corner;
        nextEntry.push_back(-1);
        if (lastEntry[number] < 0) {
            firstEntry[number] = entry;
        } else {
            nextEntry[lastEntry[number]] = entry;
        }
        lastEntry[number] = entry;
    }
}

void FaceTriangleList::Append(const std::vector<Triangle2f>& added) {
    for (const Triangle2f& triangle : added) Append(triangle);
}

bool FaceTriangleList::HasEdge(int32_t first, int32_t second) const {
    if (first == DelaunayPoints::kNone || second == DelaunayPoints::kNone) return false;
    for (int32_t entry = firstEntry[first]; entry >= 0; entry = nextEntry[entry]) {
        const auto& [a, b, c] = corners[entry / 3];
        if (!IsErased(entry / 3) && (a == second || b == second || c == second)) return true;
    }
    return false;
}

void FaceTriangleList::MoveTo(std::vector<Triangle2f>& out) const {
    for (int32_t place = 0; place < PlaceCount(); ++place) {
        if (!IsErased(place)) out.push_back(triangles[place]);
    }
}

}  // namespace kelmo
