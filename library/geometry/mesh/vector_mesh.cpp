// SPDX-License-Identifier: GPL-3.0-or-later
#include "geometry/mesh/vector_mesh.h"

#include <algorithm>
#include <new>

namespace kelmo {
namespace {

std::unique_ptr<float[]> NewFloats(size_t count) {
    return std::unique_ptr<float[]>(new (std::nothrow) float[count]);
}

std::unique_ptr<float[]> NewZeros(size_t count) {
    return std::unique_ptr<float[]>(new (std::nothrow) float[count]());
}

}  // namespace

void VectorMesh::NewDataBuffer(int64_t count) {
    if (count <= 0) return;
    if (IsValid() && count <= capacity && count > capacity / 4) {
        elements.reset();
        std::fill_n(position.get(), count * 3 * kPositionComponents, 0.0f);
        triangleCount = static_cast<int32_t>(count);
        return;  // nobody writes to `meshInfo`: it is still zero
    }
    Free();
    if (count > kMaxTriangles) return;
    const size_t vertices = static_cast<size_t>(count) * 3;
    position = NewZeros(vertices * kPositionComponents);
    texcoord = NewFloats(vertices * kTexcoordComponents);
    normals = NewFloats(vertices * kNormalComponents);
    tangents = NewFloats(vertices * kTangentComponents);
    meshInfo = NewZeros(vertices * kMeshInfoComponents);
    centers = NewFloats(vertices * kCenterComponents);
    triangleCount = static_cast<int32_t>(count);
    capacity = count;
    if (!IsValid()) Free();
}

bool VectorMesh::IsValid() const {
    return position && texcoord && normals && tangents && meshInfo && centers && triangleCount >= 1;
}

void VectorMesh::BuildElements() {
    if (elements || triangleCount <= 0) return;
    elements.reset(new (std::nothrow) uint32_t[static_cast<size_t>(triangleCount) * 6]);
    if (!elements) {
        Free();
        return;
    }
    uint32_t* line = elements.get();
    for (uint32_t first = 0; first < static_cast<uint32_t>(triangleCount) * 3; first += 3) {
        for (const uint32_t corner : {0, 1, 1, 2, 2, 0}) *line++ = first + corner;
    }
}

void VectorMesh::Free() {
    position.reset();
    texcoord.reset();
    normals.reset();
    tangents.reset();
    meshInfo.reset();
    centers.reset();
    elements.reset();
    triangleCount = 0;
    capacity = 0;
}

}  // namespace kelmo
