// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <ostream>

#include "geometry/mesh/vector_mesh.h"

namespace kelmo::tools {

/// Writes a mesh as a Wavefront OBJ model: positions, texture coordinates, normals of length 1, and
/// one group for each surface (face, body, bevel, decoration). Triangles are turned to be
/// counter-clockwise seen from the side that their normals face, as the format's readers expect.
void WriteObj(std::ostream& out, const VectorMesh& mesh);

}  // namespace kelmo::tools
