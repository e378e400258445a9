// SPDX-License-Identifier: GPL-3.0-or-later
#include "geometry/contours/contours.h"

#include <algorithm>
#include <cmath>

#include "geometry/contours/contours_space.h"

namespace kelmo {

namespace {

/// A short step size would cut a long segment without end. Steps beyond the first of each segment,
/// over all groups: a picture full of text needs some ten thousand.
constexpr int32_t kMaxExtraSteps = 1 << 20;

/// Steps of one segment; takes what is beyond one from `budget`.
int32_t StepCount(const PathInfo& path, float step, bool subdivideLines, int32_t& budget) {
    const bool mayCut = path.type == kPathLine ? subdivideLines : path.subdivide;
    if (!mayCut) {
        return 1;
    }
    const cv::Point2f d = path.end - path.start;
    const float count = std::sqrt(d.x * d.x + d.y * d.y) / step + 1;
    // A group without area (step 0) has nothing to show; one step a segment keeps its points.
    if (step == 0 || std::isnan(count)) {
        return 1;
    }
    if (count < 1) {
        return 0;
    }
    const int32_t n = static_cast<int32_t>(std::min(count, budget + 1.0f));
    budget -= n - 1;
    return n;
}

}  // namespace

void Contours::ClearDerived() {
    m_Points.clear();
    m_Edges.clear();
    m_EdgeCores.clear();
    m_PathLengths.clear();
    m_EdgeExtends.clear();
    m_Triangles.clear();
    m_GroupRects.clear();
}

void Contours::FlattenPaths(float segment, bool subdivideLines) {
    ClearDerived();
    int32_t budget = kMaxExtraSteps;
    for (const ContourPath& group : m_Paths) {
        const float area = (group.maxX - group.minX) * (group.maxY - group.minY);
        const float step = std::sqrt(area * 8) * segment;
        float length = 0;
        auto& groupPoints = m_Points.emplace_back(group.subPaths.size());
        auto& groupEdges = m_Edges.emplace_back(group.subPaths.size());
        for (size_t sub = 0; sub < group.subPaths.size(); ++sub) {
            for (const PathInfo& path : group.subPaths[sub]) {
                const int32_t n = StepCount(path, step, subdivideLines, budget);
                cv::Point2f from = path.start;
                for (int32_t k = 0; k < n; ++k) {
                    const cv::Point2f to = path.At(static_cast<float>(k + 1) / n);
                    groupPoints[sub].push_back(to);
                    groupEdges[sub].push_back(from);
                    groupEdges[sub].push_back(to);
                    length += static_cast<float>(cv::norm(to - from));
                    from = to;
                }
            }
        }
        m_PathLengths.push_back(length);
    }
}

}  // namespace kelmo
