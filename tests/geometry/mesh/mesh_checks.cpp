// SPDX-License-Identifier: GPL-3.0-or-later
#include "mesh_checks.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <map>
#include <new>

#include "geometry/contours/contour_face.h"
#include "geometry/shapes/outlines.h"

namespace {
constexpr int kPoisonByte = 0x7F;
}

// The meshes alone allocate this way.
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    void* memory = std::malloc(size);
    if (memory) std::memset(memory, kPoisonByte, size);
    return memory;
}
void operator delete[](void* memory) noexcept {
    std::free(memory);
}
void operator delete[](void* memory, std::size_t) noexcept {
    std::free(memory);
}
void operator delete[](void* memory, const std::nothrow_t&) noexcept {
    std::free(memory);
}
// Whatever else allocates arrays must then be freed alike.
void* operator new[](std::size_t size) {
    if (void* memory = std::malloc(size)) return memory;
    throw std::bad_alloc();
}

namespace kelmo::test {
namespace {

const float kPoison = std::bit_cast<float>(0x7F7F7F7Fu);

template <int components>
cv::Vec<float, components> Read(const std::unique_ptr<float[]>& values, int64_t vertex) {
    return cv::Vec<float, components>(values.get() + vertex * components);
}

template <int components>
bool IsWritten(const cv::Vec<float, components>& values) {
    return std::all_of(values.val, values.val + components,
                       [](float v) { return std::isfinite(v) && v != kPoison; });
}

}  // namespace

MeshVertex VertexOf(const VectorMesh& mesh, int64_t vertex) {
    return {Read<4>(mesh.position, vertex), Read<3>(mesh.texcoord, vertex),
            Read<3>(mesh.normals, vertex), Read<3>(mesh.tangents, vertex)};
}

cv::Vec4f CenterOf(const VectorMesh& mesh, int64_t vertex) {
    return Read<4>(mesh.centers, vertex);
}

cv::Vec3f PlaceOf(const VectorMesh& mesh, int64_t vertex) {
    const cv::Vec4f position = Read<4>(mesh.position, vertex);
    return {position[0], position[1], position[2]};
}

std::string FaultOf(const VectorMesh& mesh) {
    for (int64_t i = 0; i < int64_t{mesh.triangleCount} * 3; ++i) {
        const MeshVertex v = VertexOf(mesh, i);
        const std::string at = "vertex " + std::to_string(i) + " of triangle " +
                               std::to_string(i / 3) + " of " + std::to_string(mesh.triangleCount);
        if (!IsWritten(v.position)) return at + ": position";
        if (!IsWritten(v.texcoord)) return at + ": texcoord";
        if (!IsWritten(v.normal)) return at + ": normal";
        if (!IsWritten(v.tangent)) return at + ": tangent";
        if (!IsWritten(CenterOf(mesh, i))) return at + ": center";
        if (cv::norm(v.normal) < 1e-4) return at + ": normal without direction";
    }
    return {};
}

int64_t OpenEdgeCount(const VectorMesh& mesh) {
    using Place = std::array<float, 3>;
    std::map<std::pair<Place, Place>, int> uses;
    for (int64_t first = 0; first < int64_t{mesh.triangleCount} * 3; first += 3) {
        std::array<Place, 3> corners;
        for (int i = 0; i < 3; ++i) {
            const cv::Vec3f p = PlaceOf(mesh, first + i);
            corners[i] = {p[0] + 0.0f, p[1] + 0.0f, p[2] + 0.0f};
        }
        for (int i = 0; i < 3; ++i) {
            ++uses[std::minmax(corners[i], corners[(i + 1) % 3])];
        }
    }
    return std::count_if(uses.begin(), uses.end(),
                         [](const auto& entry) { return entry.second != 2; });
}

ParsedOutlines::ParsedOutlines(const std::vector<std::vector<cv::Point2f>>& outlines, bool isText) {
    FillContours(contours, outlines);
    contours.m_IsText = isText;
    ContourFace().ParseContours(contours, false, 0, 0);
}

}  // namespace kelmo::test
