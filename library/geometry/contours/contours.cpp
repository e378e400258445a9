// SPDX-License-Identifier: GPL-3.0-or-later
#include "geometry/contours/contours.h"

#include <algorithm>
#include <cmath>

#include "geometry/contours/contours_space.h"

namespace kelmo {

namespace {

/// Steps beyond the first of each segment, in all groups together.
constexpr size_t kMostStepsInAll = 1 << 19;

/// Length of what may be cut of a segment.
float CutLength(const PathInfo& path, bool subdivideLines) {
    const bool mayCut = path.type == kPathLine ? subdivideLines : path.subdivide;
    return mayCut ? static_cast<float>(cv::norm(path.end - path.start)) : 0.0f;
}

/// The step of a group: as asked for, or as long as it must be for `mostSteps`.
float StepOf(const ContourPath& group, float segment, bool subdivideLines, size_t mostSteps) {
    const float area = (group.maxX - group.minX) * (group.maxY - group.minY);
    const float step = std::sqrt(area * 8) * segment;
    double length = 0;
    for (const auto& subPath : group.subPaths) {
        for (const PathInfo& path : subPath) length += CutLength(path, subdivideLines);
    }
    return step > 0 ? std::max(step, static_cast<float>(length / mostSteps)) : step;
}

int32_t StepCount(float cutLength, float step) {
    const float count = cutLength / step + 1;
    // A group without area (step 0) has nothing to show; one step a segment keeps its points.
    if (step == 0 || std::isnan(count)) return 1;
    return static_cast<int32_t>(std::max(count, 0.0f));
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
    const size_t mostSteps = std::clamp<size_t>(
        kMostStepsInAll / std::max<size_t>(m_Paths.size(), 1), 1, kMostStepsOfFace);
    for (const ContourPath& group : m_Paths) {
        const float step = StepOf(group, segment, subdivideLines, mostSteps);
        float length = 0;
        auto& groupPoints = m_Points.emplace_back(group.subPaths.size());
        auto& groupEdges = m_Edges.emplace_back(group.subPaths.size());
        for (size_t sub = 0; sub < group.subPaths.size(); ++sub) {
            for (const PathInfo& path : group.subPaths[sub]) {
                const int32_t n = StepCount(CutLength(path, subdivideLines), step);
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
