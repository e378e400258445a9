// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

#include "geometry/mesh/mesh_builder_shape.h"

namespace kelmo::tools {

/// What a mesh is built with: the shape as a user gives it, before it is adjusted, and the numbers
/// beside it.
struct MeshParameters {
    MeshShape shape;
    float segment = 0.011f;  ///< step length relative to a glyph
    float extrude = 0.1f;    ///< depth factor
};

/// Takes "BevelSize=8" under the names of the effects' parameters, with their reading rules:
/// BevelSegments n makes n + 1 strips, segment is in thousandths. Throws std::invalid_argument with
/// a sentence for a name or a value that is not understood.
void SetParameter(MeshParameters& parameters, const std::string& assignment);

/// The names that `SetParameter` knows.
std::vector<std::string> ParameterNames();

}  // namespace kelmo::tools
