// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "geometry/contours/contours.h"
#include "geometry/mesh/vector_mesh_writer.h"

namespace kelmo {

/// Number of triangles of the decoration: two for the box and two for each rect, none without a
/// box.
int64_t CountDecoration(const Contours& contours);

/// Writes the rects and then the box into the last triangles of a mesh of `triangleCount`.
void WriteDecoration(VectorMeshWriter& writer, const Contours& contours, int64_t triangleCount);

}  // namespace kelmo
