// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/mesh/obj_writer.h"

#include <cmath>
#include <opencv2/core/matx.hpp>
#include <string>

namespace kelmo::tools {
namespace {

cv::Vec3f At(const float* values, int components, int64_t vertex) {
    const float* at = values + vertex * components;
    return {at[0], at[1], at[2]};
}

const char* SurfaceOf(float kind) {
    if (kind >= 1000) return "decoration";
    if (kind >= 1.5f) return "bevel";
    return kind >= 0.5f ? "body" : "face";
}

bool IsClockwise(const VectorMesh& mesh, int64_t first) {
    const auto point = [&](int64_t i) {
        return At(mesh.position.get(), VectorMesh::kPositionComponents, first + i);
    };
    const cv::Vec3f across = (point(1) - point(0)).cross(point(2) - point(0));
    return across.dot(At(mesh.normals.get(), VectorMesh::kNormalComponents, first)) < 0;
}

void WriteVertex(std::ostream& out, const VectorMesh& mesh, int64_t vertex) {
    const cv::Vec3f p = At(mesh.position.get(), VectorMesh::kPositionComponents, vertex);
    const cv::Vec3f t = At(mesh.texcoord.get(), VectorMesh::kTexcoordComponents, vertex);
    cv::Vec3f n = At(mesh.normals.get(), VectorMesh::kNormalComponents, vertex);
    const auto length = static_cast<float>(cv::norm(n));
    if (length > 0) n /= length;
    out << "v " << p[0] << ' ' << p[1] << ' ' << p[2] << "\nvt " << t[0] << ' ' << t[1] << "\nvn "
        << n[0] << ' ' << n[1] << ' ' << n[2] << '\n';
}

}  // namespace

void WriteObj(std::ostream& out, const VectorMesh& mesh) {
    out.precision(8);
    const int64_t vertexCount = int64_t{mesh.triangleCount} * 3;
    for (int64_t vertex = 0; vertex < vertexCount; ++vertex) WriteVertex(out, mesh, vertex);
    std::string surface;
    for (int64_t first = 0; first < vertexCount; first += 3) {
        const float kind = At(mesh.texcoord.get(), VectorMesh::kTexcoordComponents, first)[2];
        if (surface != SurfaceOf(kind)) {
            surface = SurfaceOf(kind);
            out << "g " << surface << '\n';
        }
        const bool isTurned = IsClockwise(mesh, first);
        out << 'f';
        for (const int64_t corner : {0, isTurned ? 2 : 1, isTurned ? 1 : 2}) {
            const int64_t number = first + corner + 1;
            out << ' ' << number << '/' << number << '/' << number;
        }
        out << '\n';
    }
}

}  // namespace kelmo::tools
