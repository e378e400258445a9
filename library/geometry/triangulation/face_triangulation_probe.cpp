// SPDX-License-Identifier: GPL-3.0-or-later
#include "geometry/triangulation/face_triangulation_probe.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace kelmo {
namespace {

constexpr size_t kMaxSlabs = 1 << 16;
// An edge may stand in many slabs; slabs are widened until edges stand in this many on average.
constexpr double kMaxSlabsPerEdge = 4;

bool IsBetween(float value, float first, float second) {
    return std::min(first, second) <= value && value <= std::max(first, second);
}

// Whether a point that the edge does not pass on the right lies on it all the same: at its end, or
// within a level edge.
bool LiesOnEnd(const cv::Point2f& point, const cv::Point2f& start, const cv::Point2f& end) {
    if (point.y != end.y) return false;
    return point.x == end.x || (point.y == start.y && IsBetween(point.x, start.x, end.x));
}

}  // namespace

ContourProbe::ContourProbe(const std::vector<cv::Point2f>& contour) {
    const size_t count = contour.size();
    if (count == 0) {
        firstOfSlab.assign(2, 0);
        return;
    }
    minY = maxY = contour[0].y;
    minX = maxX = contour[0].x;
    double climb = 0;  // the way up and down along the contour
    for (size_t i = 0; i < count; ++i) {
        minY = std::min(minY, contour[i].y);
        maxY = std::max(maxY, contour[i].y);
        minX = std::min(minX, contour[i].x);
        maxX = std::max(maxX, contour[i].x);
        climb += std::abs(static_cast<double>(contour[(i + 1) % count].y) - contour[i].y);
    }
    // So close to the left of an edge rounding decides; leave that to the test itself.
    minX -= (maxX - minX) / 256;
    const double height = static_cast<double>(maxY) - minY;
    if (height > 0 && climb > 0) {
        const double most = kMaxSlabsPerEdge * static_cast<double>(count) * height / climb;
        const double wanted = std::min({most, static_cast<double>(count), double{kMaxSlabs}});
        const auto scale = static_cast<float>(std::floor(std::max(wanted, 1.0)) / height);
        if (std::isfinite(scale)) {
            slabsPerUnit = scale;
            slabCount = static_cast<int>(std::max(wanted, 1.0));
        }
    }

    firstOfSlab.assign(slabCount + 1, 0);
    const auto forEachPlace = [&](auto&& use) {
        for (size_t i = 0; i < count; ++i) {
            const EdgeEnds edge{contour[(i + count - 1) % count], contour[i]};
            const int last = SlabOf(std::max(edge.start.y, edge.end.y));
            for (int slab = SlabOf(std::min(edge.start.y, edge.end.y)); slab <= last; ++slab) {
                use(slab, edge);
            }
        }
    };
    forEachPlace([&](int slab, const EdgeEnds&) { ++firstOfSlab[slab + 1]; });
    for (int slab = 0; slab < slabCount; ++slab) firstOfSlab[slab + 1] += firstOfSlab[slab];
    edges.resize(firstOfSlab.back());
    std::vector<uint32_t> next(firstOfSlab.begin(), firstOfSlab.end() - 1);
    forEachPlace([&](int slab, const EdgeEnds& edge) { edges[next[slab]++] = edge; });
}

int ContourProbe::SlabOf(float y) const {
    return std::clamp(static_cast<int>((y - minY) * slabsPerUnit), 0, slabCount - 1);
}

int ContourProbe::Side(const cv::Point2f& point) const {
    const bool isNear = point.y >= minY && point.y <= maxY && point.x >= minX && point.x <= maxX;
    if (!isNear) return -1;
    const int slab = SlabOf(point.y);
    bool isInside = false;  // an odd number of edges to the right
    for (uint32_t i = firstOfSlab[slab]; i < firstOfSlab[slab + 1]; ++i) {
        const auto& [start, end] = edges[i];
        const bool isPassed =
            (start.y <= point.y) != (end.y <= point.y) && (start.x >= point.x || end.x >= point.x);
        if (!isPassed) {
            if (LiesOnEnd(point, start, end)) return 0;
            continue;
        }
        const double turn = static_cast<double>(point.y - start.y) * (end.x - start.x) -
                            static_cast<double>(point.x - start.x) * (end.y - start.y);
        if (turn == 0) return 0;
        if ((turn > 0) == (end.y > start.y)) isInside = !isInside;
    }
    return isInside ? 1 : -1;
}

}  // namespace kelmo
