// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <opencv2/core.hpp>

#include "geometry/mesh/vector_mesh.h"

namespace kelmo::tools {

struct MeshView {
    int width = 1280;    ///< pixels
    int height = 720;    ///< pixels
    float rotateX = 20;  ///< degrees, about the middle of the mesh
    float rotateY = -25;
    float zoom = 1;        ///< 1 fits the mesh into the picture
    bool lines = false;    ///< draws the triangles' edges over the surfaces
    bool normals = false;  ///< shows directions as colours instead of light
};

/// Draws a mesh with a depth buffer on the CPU, nine samples a pixel, both sides of each triangle:
/// faces grey, bodies blue, bevels orange, decoration in its colour. Light follows the normals, so
/// a wrong one shows as a dark spot. An 8-bit BGR picture.
cv::Mat DrawMesh(const VectorMesh& mesh, const MeshView& view);

}  // namespace kelmo::tools
