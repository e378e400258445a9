// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/transition/box_mesh.h"

#include <array>

namespace kelmo {
namespace {

using Point = std::array<float, 3>;
using TexPoint = std::array<float, 2>;

/// A rectangle of two triangles. Corners as seen from outside: right top, left bottom, right
/// bottom, left top.
struct Face {
    Point normal;
    Point rightTop;
    Point leftBottom;
    Point rightBottom;
    Point leftTop;
};

/// The part of the picture that every face of a box shows.
struct Picture {
    float left = 0.0F;
    float bottom = 0.0F;
    float right = 1.0F;
    float top = 1.0F;
};

void Append(std::vector<float>& out, const Point& p) {
    out.insert(out.end(), p.begin(), p.end());
}

template <std::size_t N>
BoxMesh Build(const std::array<Face, N>& faces, const Picture& picture) {
    BoxMesh mesh;
    const TexPoint rightTop = {picture.right, picture.top};
    const TexPoint leftBottom = {picture.left, picture.bottom};
    const TexPoint rightBottom = {picture.right, picture.bottom};
    const TexPoint leftTop = {picture.left, picture.top};
    for (const Face& face : faces) {
        for (const Point& p : {face.rightTop, face.leftBottom, face.rightBottom, face.rightTop,
                               face.leftTop, face.leftBottom}) {
            Append(mesh.positions, p);
            Append(mesh.normals, face.normal);
        }
        for (const TexPoint& t :
             {rightTop, leftBottom, rightBottom, rightTop, leftTop, leftBottom}) {
            mesh.texcoords.insert(mesh.texcoords.end(), t.begin(), t.end());
        }
    }
    return mesh;
}

constexpr std::array<Face, 6> kCube = {{
    {{0, 0, 1}, {1, 1, 1}, {-1, -1, 1}, {1, -1, 1}, {-1, 1, 1}},
    {{-1, 0, 0}, {-1, 1, 1}, {-1, -1, -1}, {-1, -1, 1}, {-1, 1, -1}},
    {{0, 0, -1}, {-1, 1, -1}, {1, -1, -1}, {-1, -1, -1}, {1, 1, -1}},
    {{1, 0, 0}, {1, 1, -1}, {1, -1, 1}, {1, -1, -1}, {1, 1, 1}},
    {{0, 1, 0}, {1, 1, -1}, {-1, 1, 1}, {1, 1, 1}, {-1, 1, -1}},
    {{0, -1, 0}, {1, -1, 1}, {-1, -1, -1}, {1, -1, -1}, {-1, -1, 1}},
}};

constexpr std::array<Face, 3> kLeftHalf = {{
    {{0, 0, 1}, {0, 1, 0}, {-1, -1, 0}, {0, -1, 0}, {-1, 1, 0}},
    {{-1, 0, 0}, {-1, 1, 0}, {-1, -1, -1}, {-1, -1, 0}, {-1, 1, -1}},
    {{1, 0, 0}, {0, 1, -1}, {0, -1, 0}, {0, -1, -1}, {0, 1, 0}},
}};

constexpr std::array<Face, 3> kTopHalf = {{
    {{0, 0, 1}, {1, 1, 0}, {-1, 0, 0}, {1, 0, 0}, {-1, 1, 0}},
    {{0, 1, 0}, {1, 1, -1}, {-1, 1, 0}, {1, 1, 0}, {-1, 1, -1}},
    {{0, -1, 0}, {1, 0, 0}, {-1, 0, -1}, {1, 0, -1}, {-1, 0, 0}},
}};

}  // namespace

const BoxMesh& CubeMesh() {
    static const BoxMesh mesh = Build(kCube, {});
    return mesh;
}

const BoxMesh& HalfBoxMesh(BoxSplit split) {
    static const BoxMesh left = Build(kLeftHalf, {.right = 0.5F});
    static const BoxMesh top = Build(kTopHalf, {.bottom = 0.5F});
    return split == BoxSplit::kLeftRight ? left : top;
}

void HandOverBoxMesh(NLEOpenGLEngineEffect& engine, const BoxMesh& mesh) {
    engine.AddVertexAttribute("position", 3, mesh.positions.data(), false, false);
    engine.AddVertexAttribute("normals", 3, mesh.normals.data(), false, false);
    engine.AddVertexAttribute("texcoord", 2, mesh.texcoords.data(), false, false);
    engine.SetVertexCount(mesh.VertexCount());
    engine.SetBlendMode(kBlendReplace);
    engine.SetDrawType(kDrawTriangles);
    engine.SetDepthTest(true);
    engine.SetDepthWrite(true);
    engine.SetClearColor(0.0F, 0.0F, 0.0F, 1.0F);
}

}  // namespace kelmo
