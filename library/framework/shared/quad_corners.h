// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace kelmo {

/// A quad as two triangles, in the corner order that every mesh of quads uses.
inline constexpr int kQuadVertices = 6;

/// Corners (x, y) in device space, y up.
inline constexpr float kQuadCorners[kQuadVertices][2] = {
    {-1.0F, 1.0F}, {1.0F, 1.0F}, {1.0F, -1.0F}, {-1.0F, 1.0F}, {1.0F, -1.0F}, {-1.0F, -1.0F},
};

/// The same corners as texture coordinates 0..1, (0, 0) at the bottom left.
inline constexpr float kQuadTexCoords[kQuadVertices][2] = {
    {0.0F, 1.0F}, {1.0F, 1.0F}, {1.0F, 0.0F}, {0.0F, 1.0F}, {1.0F, 0.0F}, {0.0F, 0.0F},
};

}  // namespace kelmo
