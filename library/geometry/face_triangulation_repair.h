// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <vector>

#include "geometry/face_triangulation.h"
#include "geometry/face_triangulation_list.h"
#include "geometry/face_triangulation_probe.h"

namespace kelmo {

/// The passes that turn an unconstrained triangulation into that of a face. A contour must hold
/// finite points without repeats one after the other; `isOuter` tells an outer contour (clockwise
/// with y up) from a hole (counter-clockwise), `probe` is that of the same contour. The passes are
/// the same as scans over the whole list for each edge or point, found through the list's indexes.

/// Forces the edges of the contour that are missing: triangles that cross one give way to a new
/// triangulation of their corners on the material's side.
void RecoverEdges(FaceTriangleList& triangles, const Polyline& contour);

/// Erases, from `firstPlace` on, triangles of which a part lies outside the outer contour or inside
/// the hole. Three points in each triangle are probed.
void CarveTriangles(FaceTriangleList& triangles, const ContourProbe& probe, bool isOuter,
                    int32_t firstPlace);
void CarveTriangles(std::vector<Triangle2f>& triangles, const ContourProbe& probe, bool isOuter);

/// Refills the gaps in the fans of triangles around the contour's points.
void RepairVertices(FaceTriangleList& triangles, const Polyline& contour, const ContourProbe& probe,
                    bool isOuter);

}  // namespace kelmo
