// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <opencv2/core.hpp>
#include <string>
#include <vector>

#include "geometry/mesh/bevel_mesh_builder.h"

namespace kelmo::test {

/// One vertex read back from a mesh.
MeshVertex VertexOf(const VectorMesh& mesh, int64_t vertex);
cv::Vec4f CenterOf(const VectorMesh& mesh, int64_t vertex);
cv::Vec3f PlaceOf(const VectorMesh& mesh, int64_t vertex);

/// What is wrong with the numbers of a mesh; empty when every vertex is written and finite and
/// every normal has a direction. This program's `new` fills the arrays with a value that no builder
/// writes, so a triangle that was counted and not written shows.
std::string FaultOf(const VectorMesh& mesh);

/// Number of edges that are not shared by two triangles; corners are compared by place exactly.
int64_t OpenEdgeCount(const VectorMesh& mesh);

/// Contours of hand-made outlines, parsed.
struct ParsedOutlines {
    explicit ParsedOutlines(const std::vector<std::vector<cv::Point2f>>& outlines,
                            bool isText = true);
    Contours contours;
};

}  // namespace kelmo::test
