// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/mesh/mesh_picture.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <opencv2/imgproc.hpp>
#include <vector>

namespace kelmo::tools {
namespace {

constexpr int kSamples = 3;  // in x and in y for each pixel
// Pictures are drawn in bands of so many pixel rows: some 150 MB of samples at the greatest width.
constexpr int kBandRows = 128;
const cv::Vec3f kBackground(0.16f, 0.14f, 0.13f);
const cv::Vec3f kLineColor(0.05f, 0.05f, 0.05f);

struct Vertex {
    cv::Vec3f screen;  ///< samples, y down; z grows towards the viewer
    cv::Vec3f normal;
    cv::Vec3f color;
};

cv::Matx33f Rotation(const MeshView& view) {
    const float x = view.rotateX * static_cast<float>(CV_PI / 180);
    const float y = view.rotateY * static_cast<float>(CV_PI / 180);
    const cv::Matx33f aboutX(1, 0, 0, 0, std::cos(x), -std::sin(x), 0, std::sin(x), std::cos(x));
    const cv::Matx33f aboutY(std::cos(y), 0, std::sin(y), 0, 1, 0, -std::sin(y), 0, std::cos(y));
    return aboutX * aboutY;
}

cv::Vec3f SurfaceColor(const cv::Vec3f& texcoord, const cv::Vec3f& tangent) {
    if (texcoord[2] >= 1000) return {tangent[2], tangent[1], tangent[0]};
    if (texcoord[2] >= 1.5f) return {0.25f, 0.55f, 0.95f};
    if (texcoord[2] >= 0.5f) return {0.85f, 0.55f, 0.30f};
    return {0.82f, 0.82f, 0.82f};
}

cv::Vec3f Lit(const cv::Vec3f& color, cv::Vec3f normal, const MeshView& view) {
    const auto length = static_cast<float>(cv::norm(normal));
    if (length < 1e-6f) return {1, 0, 1};  // nothing to light: shows at once
    normal /= length;
    if (view.normals)
        return (cv::Vec3f(normal[2], normal[1], normal[0]) + cv::Vec3f::all(1)) * 0.5f;
    static const cv::Vec3f kKey = cv::normalize(cv::Vec3f(-0.4f, 0.6f, 0.7f));
    static const cv::Vec3f kFill = cv::normalize(cv::Vec3f(0.8f, -0.2f, 0.4f));
    const float light = 0.12f + 0.75f * std::max(0.0f, normal.dot(kKey)) +
                        0.25f * std::max(0.0f, normal.dot(kFill));
    const float shine = std::pow(std::max(0.0f, 2 * normal.dot(kKey) * normal[2] - kKey[2]), 24.0f);
    return color * light + cv::Vec3f::all(0.35f * shine);
}

// The depth buffer of some pixel rows and what stands in it, in samples.
class Canvas {
public:
    Canvas(const MeshView& meshView, cv::Range pixelRows)
        : view(meshView),
          rows(pixelRows),
          color(pixelRows.size() * kSamples, meshView.width * kSamples, CV_32FC3, kBackground),
          depth(color.size(), CV_32F, cv::Scalar(std::numeric_limits<float>::lowest())) {}

    void Triangle(const std::array<Vertex, 3>& v) {
        const cv::Vec3f &a = v[0].screen, &b = v[1].screen, &c = v[2].screen;
        const float area = Side(a, b, c[0], c[1]);
        if (area == 0 || !std::isfinite(area)) return;
        const int left = std::max(0, Floor(std::min({a[0], b[0], c[0]})));
        const int right = std::min(color.cols - 1, Floor(std::max({a[0], b[0], c[0]})) + 1);
        const int first = rows.start * kSamples;
        const int top = std::max(first, Floor(std::min({a[1], b[1], c[1]})));
        const int bottom =
            std::min(first + color.rows - 1, Floor(std::max({a[1], b[1], c[1]})) + 1);
        for (int y = top; y <= bottom; ++y) {
            for (int x = left; x <= right; ++x) {
                const float px = static_cast<float>(x) + 0.5f;
                const float py = static_cast<float>(y) + 0.5f;
                const float wa = Side(b, c, px, py) / area;
                const float wb = Side(c, a, px, py) / area;
                const float wc = Side(a, b, px, py) / area;
                if (wa < 0 || wb < 0 || wc < 0) continue;
                const float z = wa * a[2] + wb * b[2] + wc * c[2];
                if (z <= depth.at<float>(y - first, x)) continue;
                depth.at<float>(y - first, x) = z;
                const cv::Vec3f normal = v[0].normal * wa + v[1].normal * wb + v[2].normal * wc;
                const cv::Vec3f surface = v[0].color * wa + v[1].color * wb + v[2].color * wc;
                const bool isLine = view.lines && IsNearEdge(v, area, {wa, wb, wc});
                color.at<cv::Vec3f>(y - first, x) =
                    isLine ? kLineColor : Lit(surface, normal, view);
            }
        }
    }

    void WriteTo(cv::Mat picture) const {
        cv::Mat small;
        cv::resize(cv::min(color, 1.0), small, {view.width, rows.size()}, 0, 0, cv::INTER_AREA);
        small.convertTo(picture.rowRange(rows), CV_8UC3, 255);
    }

private:
    static int Floor(float value) {
        return static_cast<int>(std::clamp(std::floor(value), -1e6f, 1e6f));
    }

    static float Side(const cv::Vec3f& from, const cv::Vec3f& to, float x, float y) {
        return (to[0] - from[0]) * (y - from[1]) - (to[1] - from[1]) * (x - from[0]);
    }

    // Weights are distances from the edges in units of the triangle's heights.
    static bool IsNearEdge(const std::array<Vertex, 3>& v, float area, const cv::Vec3f& weights) {
        for (int i = 0; i < 3; ++i) {
            const cv::Vec3f edge = v[(i + 2) % 3].screen - v[(i + 1) % 3].screen;
            const float distance = weights[i] * std::abs(area) / std::hypot(edge[0], edge[1]);
            if (distance < 1.2f) return true;
        }
        return false;
    }

    const MeshView& view;
    cv::Range rows;  ///< of the picture, pixels
    cv::Mat color;
    cv::Mat depth;
};

cv::Vec3f Triple(const float* values, int components, int64_t vertex) {
    const float* at = values + vertex * components;
    return {at[0], at[1], at[2]};
}

// Grows around points.
struct Bounds {
    cv::Vec3f least = cv::Vec3f::all(std::numeric_limits<float>::max());
    cv::Vec3f most = -least;

    void Include(const cv::Vec3f& p) {
        for (int i = 0; i < 3; ++i) {
            least[i] = std::min(least[i], p[i]);
            most[i] = std::max(most[i], p[i]);
        }
    }
    cv::Vec3f Center() const { return (least + most) * 0.5f; }
    float Size(int axis) const { return std::max(most[axis] - least[axis], 1e-6f); }
};

// Where the mesh goes on the canvas.
struct Placing {
    cv::Matx33f rotation;
    cv::Vec3f center;
    float scale = 1;
    cv::Vec3f middle{};  ///< on the canvas

    // A mild perspective: the viewer stands four half heights away.
    cv::Vec3f Project(const VectorMesh& mesh, int64_t vertex) const {
        const cv::Vec3f p =
            rotation *
            (Triple(mesh.position.get(), VectorMesh::kPositionComponents, vertex) - center);
        const float nearness = scale * 4 / std::max(4 - p[2], 0.1f);
        return {middle[0] + p[0] * nearness, middle[1] - p[1] * nearness, p[2]};
    }

    Vertex Place(const VectorMesh& mesh, int64_t vertex) const {
        const cv::Vec3f texcoord =
            Triple(mesh.texcoord.get(), VectorMesh::kTexcoordComponents, vertex);
        const cv::Vec3f tangent =
            Triple(mesh.tangents.get(), VectorMesh::kTangentComponents, vertex);
        return {Project(mesh, vertex),
                rotation * Triple(mesh.normals.get(), VectorMesh::kNormalComponents, vertex),
                SurfaceColor(texcoord, tangent)};
    }
};

Placing Fit(const VectorMesh& mesh, const MeshView& view) {
    const int64_t count = int64_t{mesh.triangleCount} * 3;
    Bounds model;
    for (int64_t vertex = 0; vertex < count; ++vertex) {
        model.Include(Triple(mesh.position.get(), VectorMesh::kPositionComponents, vertex));
    }
    Placing placing{Rotation(view), model.Center()};
    Bounds seen;
    for (int64_t vertex = 0; vertex < count; ++vertex) {
        seen.Include(placing.Project(mesh, vertex));
    }
    const auto width = static_cast<float>(view.width * kSamples);
    const auto height = static_cast<float>(view.height * kSamples);
    placing.scale = 0.9f * view.zoom * std::min(width / seen.Size(0), height / seen.Size(1));
    placing.middle = cv::Vec3f(width / 2, height / 2, 0) - seen.Center() * placing.scale;
    return placing;
}

}  // namespace

cv::Mat DrawMesh(const VectorMesh& mesh, const MeshView& view) {
    const Placing placing = Fit(mesh, view);
    std::vector<std::array<Vertex, 3>> triangles(mesh.triangleCount);
    for (size_t i = 0; i < triangles.size(); ++i) {
        const auto first = static_cast<int64_t>(3 * i);
        triangles[i] = {placing.Place(mesh, first), placing.Place(mesh, first + 1),
                        placing.Place(mesh, first + 2)};
    }
    cv::Mat picture(view.height, view.width, CV_8UC3);
    for (int row = 0; row < view.height; row += kBandRows) {
        Canvas canvas(view, {row, std::min(row + kBandRows, view.height)});
        for (const std::array<Vertex, 3>& triangle : triangles) canvas.Triangle(triangle);
        canvas.WriteTo(picture);
    }
    return picture;
}

}  // namespace kelmo::tools
