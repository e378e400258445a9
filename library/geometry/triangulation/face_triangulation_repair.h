// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <vector>

#include "geometry/triangulation/face_triangulation.h"
#include "geometry/triangulation/face_triangulation_list.h"
#include "geometry/triangulation/face_triangulation_probe.h"

namespace kelmo {

/// A contour as the passes use it: finite points, none the same as the one before it. Outer
/// contours run clockwise with y up, holes counter-clockwise.
struct FaceContour {
    FaceContour(const Polyline& points, bool outer);

    /// Looks the points up in the list of triangles, where a point's number stays what it is.
    void Number(const FaceTriangleList& triangles);

    /// The number of the point at `index`. One that the first triangulation took for another has
    /// none, until a repair that sees it among fewer points brings it in.
    int32_t NumberAt(size_t index, const FaceTriangleList& triangles) const {
        return numbers[index] != DelaunayPoints::kNone ? numbers[index]
                                                       : triangles.NumberOf(line[index]);
    }

    Polyline line;
    ContourProbe probe;
    bool isOuter;

private:
    std::vector<int32_t> numbers;
};

/// The passes that turn an unconstrained triangulation into that of a face: the same as scans over
/// the whole list for each edge or point, found through the list's indexes.

/// Forces the edges of the contour that are missing: triangles that cross one give way to a new
/// triangulation of their corners on the material's side.
void RecoverEdges(FaceTriangleList& triangles, const FaceContour& contour);

/// Erases, from `firstPlace` on, triangles of which a part lies outside the outer contour or inside
/// the hole. Three points in each triangle are probed; of a hole only those of triangles near it.
void CarveTriangles(FaceTriangleList& triangles, const FaceContour& contour, int32_t firstPlace);
void CarveTriangles(std::vector<Triangle2f>& triangles, const FaceContour& contour);

/// Refills the gaps in the fans of triangles around the contour's points.
void RepairVertices(FaceTriangleList& triangles, const FaceContour& contour);

}  // namespace kelmo
