// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstring>
#include <opencv2/core/types.hpp>

#include "geometry/mesh/vector_mesh.h"

namespace kelmo {

/// One vertex of a `VectorMesh`; the fields are its attributes.
struct MeshVertex {
    cv::Vec4f position;
    cv::Vec3f texcoord;
    cv::Vec3f normal;
    cv::Vec3f tangent;
};

/// Writes vertices straight into the arrays of a mesh. A triangle beyond its end is not written:
/// the arrays have no slack, and counting and writing stand in different places.
class VectorMeshWriter {
public:
    explicit VectorMeshWriter(VectorMesh& target) : mesh(target) {}

    void Put(int64_t triangle, int corner, const MeshVertex& vertex, const cv::Vec4f& center) {
        if (triangle < 0 || triangle >= mesh.triangleCount) return;
        const size_t place = static_cast<size_t>(triangle) * 3 + corner;
        Copy(mesh.position, place, vertex.position);
        Copy(mesh.texcoord, place, vertex.texcoord);
        Copy(mesh.normals, place, vertex.normal);
        Copy(mesh.tangents, place, vertex.tangent);
        Copy(mesh.centers, place, center);
    }

private:
    template <int components>
    static void Copy(const std::unique_ptr<float[]>& to, size_t place,
                     const cv::Vec<float, components>& values) {
        std::memcpy(to.get() + place * components, values.val, sizeof(values.val));
    }

    VectorMesh& mesh;
};

}  // namespace kelmo
