// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "geometry/mesh/mesh_builder.h"

namespace kelmo {

/// Builds meshes with bevels: strips that join the body's outline and the face's.
///
/// The strips of a sub-contour stand step by step, row by row, front pass before back pass. A shape
/// without faces gets both passes whatever its extrusion type: its back would stay open.
class BevelMeshBuilder : public MeshBuilder {
public:
    int64_t CountTriangles(const Contours& contours, int64_t& sideCount,
                           int64_t& faceCount) const override;

protected:
    void BuildBevel(VectorMeshWriter& writer, const Contours& contours,
                    int64_t firstTriangle) const override;

private:
    bool HasBackPass() const;
};

}  // namespace kelmo
