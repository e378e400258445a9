// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <vector>

#include "contract/engine.h"

namespace kelmo {

/// Faces of a box as separate triangles: 3, 3 and 2 floats a vertex.
struct BoxMesh {
    std::vector<float> positions;
    std::vector<float> normals;
    std::vector<float> texcoords;

    int32_t VertexCount() const { return static_cast<int32_t>(positions.size() / 3); }
};

/// How a picture is split into two half boxes.
enum class BoxSplit { kLeftRight, kTopBottom };

/// The cube from -1 to 1: front, left, back, right, top, bottom, each with the whole picture. Made
/// on first use, then shared.
const BoxMesh& CubeMesh();
/// Half a box, 1 deep behind z = 0: its front and its two outer sides, with half of the picture.
const BoxMesh& HalfBoxMesh(BoxSplit split);

/// Attributes, vertex count and the state in which boxes are drawn: replacing, with depth, over
/// opaque black.
void HandOverBoxMesh(NLEOpenGLEngineEffect& engine, const BoxMesh& mesh);

}  // namespace kelmo
