// SPDX-License-Identifier: GPL-3.0-or-later
#include "geometry/mesh/mesh_builder.h"

#include <algorithm>
#include <cmath>

#include "geometry/mesh/mesh_builder_decoration.h"
#include "geometry/mesh/mesh_builder_mover.h"
#include "geometry/offset/edge_offset.h"
#include "platform/host_access.h"

namespace kelmo {
namespace {

constexpr double kSmallestSize = 1e-9;
// Bevel sizes are given in thirtieths of a group's size; a positive one moves out of the material,
// against the offset directions.
constexpr double kSizeUnit = 30;
constexpr float kDepthPerExtrude = 1.8f;
constexpr float kWallKind = 1;
// Two directions whose sum is shorter run against each other, but for what an offset bent them.
constexpr float kReversal = 1e-3f;

// The size of a group that bevels are relative to: for text that of the smallest glyph, so that all
// glyphs get the same bevel; for a mask the narrower side of each shape.
double BevelUnit(const Contours& contours, size_t group) {
    if (contours.m_IsText) {
        // Without a point in any group no smallest one was found.
        const bool isFound = contours.m_MinGroupSize < std::numeric_limits<float>::max();
        return isFound ? std::max<double>(kSmallestSize, contours.m_MinGroupSize) : kSmallestSize;
    }
    const cv::Size2f& size = contours.m_GroupRects[group].size;
    return std::max<double>(kSmallestSize, std::min(size.width, size.height));
}

// Groups that all lists hold; they differ only in contours that were not parsed.
size_t GroupCount(const Contours& contours) {
    return std::min({contours.m_Edges.size(), contours.m_EdgeCores.size(),
                     contours.m_Triangles.size(), contours.m_GroupRects.size()});
}

cv::Point2f DirectionAt(const std::vector<EdgeCoreInfo>& cores, size_t point) {
    return point < cores.size() ? cores[point].dir : cv::Point2f();
}

// The ends of a step on the body, moved when the body grows.
std::pair<cv::Point2f, cv::Point2f> BodyStep(const Contours& contours, size_t group, size_t contour,
                                             size_t step) {
    const auto& extends = contours.m_EdgeExtends[group][contour];
    if (!extends.empty()) return {extends[2 * step].bodyPoint, extends[2 * step + 1].bodyPoint};
    const auto& edges = contours.m_Edges[group][contour];
    return {edges[2 * step], edges[2 * step + 1]};
}

std::pair<cv::Point2f, cv::Point2f> FaceStep(const Contours& contours, size_t group, size_t contour,
                                             size_t step) {
    const auto& extends = contours.m_EdgeExtends[group][contour];
    if (!extends.empty()) return {extends[2 * step].facePoint, extends[2 * step + 1].facePoint};
    return BodyStep(contours, group, contour, step);
}

// Half the sum of the two steps' outward normals, not of length 1.
cv::Vec3f WallNormal(const cv::Point2f& direction, const cv::Point2f& neighbour) {
    const cv::Point2f sum = direction + neighbour;
    if (std::abs(sum.x) + std::abs(sum.y) < kReversal) return {-direction.y, direction.x, 0};
    return {-sum.y / 2, sum.x / 2, 0};
}

// One end of a wall: where it stands, its normal, and its length along the outline.
struct WallEnd {
    cv::Point2f point;
    cv::Vec3f normal;
    float u;
};

struct WallHeight {
    float bottomZ;
    float bottomV;
};

void WriteWall(VectorMeshWriter& writer, int64_t triangle, const WallEnd& p, const WallEnd& q,
               const WallHeight& height, const cv::Vec3f& tangent, const cv::Vec4f& center) {
    const auto vertex = [&](const WallEnd& end, bool isBottom) {
        return MeshVertex{{end.point.x, end.point.y, isBottom ? height.bottomZ : 0, 0},
                          {end.u, isBottom ? height.bottomV : 0, kWallKind},
                          end.normal,
                          tangent};
    };
    writer.Put(triangle, 0, vertex(q, false), center);
    writer.Put(triangle, 1, vertex(p, false), center);
    writer.Put(triangle, 2, vertex(p, true), center);
    writer.Put(triangle + 1, 0, vertex(q, true), center);
    writer.Put(triangle + 1, 1, vertex(q, false), center);
    writer.Put(triangle + 1, 2, vertex(p, true), center);
}

cv::Vec3f Tangent(const cv::Point2f& direction) {
    return {direction.x, direction.y, 0};
}

float Fraction(float value) {
    return value - std::floor(value);
}

}  // namespace

// Where the next triangle of each surface goes.
struct MeshBuilder::Layout {
    int64_t front = 0;
    int64_t back = 0;
    int64_t wall = 0;
    int64_t innerWall = 0;
    WallHeight wallHeight{};
};

cv::Point2f MeshFaceMap::At(const cv::Point2f& point) const {
    const cv::Point2f from = point - center;
    const float x = from.x * cosine - from.y * sine;
    const float y = from.x * sine + from.y * cosine;
    const auto safe = [](float size) { return size > 0 ? size : 1.0f; };
    return {aspect * x / safe(width) + 0.5f, y / safe(height) + 0.5f};
}

float MeshBuilder::BevelDepth() const {
    const float size = static_cast<float>(std::abs(shape.bevelSize) / kSizeUnit);
    switch (shape.modelType) {
        case MeshShape::kBevelled:
        case MeshShape::kPlated:
            return size * shape.bevelDepth;
        case MeshShape::kBordered:
            return size * shape.edgeExtrusionDepth;
        case MeshShape::kInflated:
            return shape.edgeExtrusionDepth;
        default:
            return size;
    }
}

int64_t MeshBuilder::CountTriangles(const Contours& contours, int64_t& sideCount,
                                    int64_t& faceCount) const {
    sideCount = 0;
    faceCount = 0;
    for (size_t group = 0; group < GroupCount(contours); ++group) {
        for (const auto& edges : contours.m_Edges[group]) {
            sideCount += static_cast<int64_t>(edges.size() / 2);
        }
        faceCount += static_cast<int64_t>(contours.m_Triangles[group].size());
    }
    if (IsOutlineOnly()) {
        sideCount *= 2;
        faceCount = 0;
    }
    return 2 * (faceCount + (HasWalls() ? sideCount : 0)) + CountDecoration(contours);
}

bool MeshBuilder::BuildMesh(VectorMesh& mesh, Contours& contours, float extrude,
                            bool /*useLimit*/) {
    if (!std::isfinite(extrude)) extrude = 0;
    groups.clear();
    const float largest = std::max(0.0f, contours.m_MaxGroupSize);
    depth = extrude * largest * kDepthPerExtrude;
    sizeInverse = static_cast<float>(1 / std::max<double>(kSmallestSize, largest));
    contours.m_EdgeExtends.clear();

    int64_t sideCount = 0;
    int64_t faceCount = 0;
    const int64_t triangleCount = CountTriangles(contours, sideCount, faceCount);
    mesh.NewDataBuffer(triangleCount);
    if (!mesh.IsValid() || mesh.triangleCount != triangleCount) {
        LogError("VectorMesh.NewDataBuffer is error! TriangleCount is %d",
                 static_cast<int>(std::min<int64_t>(triangleCount, INT32_MAX)));
        return false;
    }

    VectorMeshWriter writer(mesh);
    Layout layout;
    layout.back = faceCount;
    layout.wall = 2 * faceCount;
    layout.innerWall = layout.wall + sideCount;
    layout.wallHeight = {-depth, std::min(1.0f, extrude)};
    for (size_t group = 0; group < GroupCount(contours); ++group) {
        std::vector<Triangle2f> front = contours.m_Triangles[group];
        std::vector<Triangle2f> back = front;
        groups.push_back(PlaceGroup(contours, group, extrude));
        OffsetGroup(contours, group, front, back);
        if (HasWalls()) WriteWalls(writer, contours, group, layout);
        if (IsOutlineOnly()) {
            WriteInnerWalls(writer, contours, group, layout);
        } else {
            WriteFaces(writer, groups.back(), front, back, layout);
        }
    }
    BuildBevel(writer, contours, 2 * faceCount + (HasWalls() ? 2 * sideCount : 0));
    WriteDecoration(writer, contours, triangleCount);
    return true;
}

void MeshBuilder::BuildBevel(VectorMeshWriter&, const Contours&, int64_t) const {}

MeshGroup MeshBuilder::PlaceGroup(const Contours& contours, size_t group, float extrude) const {
    const double unit = BevelUnit(contours, group);
    const cv::Point2f& center = contours.m_GroupRects[group].center;
    MeshGroup placed{};
    placed.center = {center.x, center.y, -depth / 2, static_cast<float>(group)};
    placed.offsetFactor = static_cast<float>(shape.bevelSize / -kSizeUnit * unit);
    placed.frontZ = std::max(static_cast<float>(BevelDepth() * unit), -extrude * 0.5f);
    placed.backZ = HasFlatBack() ? -depth : -depth - placed.frontZ;
    placed.faceMap = MapFaces(contours, group);
    return placed;
}

MeshFaceMap MeshBuilder::MapFaces(const Contours& contours, size_t group) const {
    MeshFaceMap map;
    const float angle = contours.m_SpareAngle * static_cast<float>(CV_PI / 180);
    map.cosine = std::cos(angle);
    map.sine = std::sin(angle);
    if (shape.uvMapMode == 1) {
        const cv::RotatedRect& all = contours.m_AllRect;
        map.center = all.center;
        map.width = std::max(all.size.width, all.size.height);
        map.height = std::min(all.size.width, all.size.height);
        map.aspect = map.width / std::max(map.height, static_cast<float>(kSmallestSize));
        return map;
    }
    map.center = contours.m_GroupRects[group].center;
    float minX = std::numeric_limits<float>::max();
    float maxX = std::numeric_limits<float>::lowest();
    float minY = minX;
    float maxY = maxX;
    for (const auto& edges : contours.m_Edges[group]) {
        for (size_t start = 0; start + 1 < edges.size(); start += 2) {
            const cv::Point2f from = edges[start] - map.center;
            const float x = from.x * map.cosine - from.y * map.sine;
            const float y = from.x * map.sine + from.y * map.cosine;
            minX = std::min(minX, x);
            maxX = std::max(maxX, x);
            minY = std::min(minY, y);
            maxY = std::max(maxY, y);
        }
    }
    // The map is as high as the largest group whatever the height of this one.
    const float height = std::max(maxY - minY, static_cast<float>(kSmallestSize));
    map.height = std::max(contours.m_MaxGroupSize, static_cast<float>(kSmallestSize));
    map.width = std::max(maxX - minX, 0.0f) * map.height / height;
    map.aspect = map.width / map.height;
    return map;
}

void MeshBuilder::OffsetGroup(Contours& contours, size_t group, std::vector<Triangle2f>& front,
                              std::vector<Triangle2f>& back) const {
    const auto& contourEdges = contours.m_Edges[group];
    auto& groupExtends = contours.m_EdgeExtends.emplace_back(contourEdges.size());
    if (shape.bevelSize == 0) return;
    const bool growsBody = shape.bevelSize > 0;
    const float factor = groups.back().offsetFactor;
    CornerMover mover(growsBody ? back : front);
    for (size_t contour = 0; contour < contourEdges.size(); ++contour) {
        const auto& edges = contourEdges[contour];
        static const std::vector<EdgeCoreInfo> kNoCores;
        const auto& groupCores = contours.m_EdgeCores[group];
        const auto& cores = contour < groupCores.size() ? groupCores[contour] : kNoCores;
        const size_t steps = edges.size() / 2;
        groupExtends[contour].reserve(2 * steps);
        for (size_t step = 0; step < steps; ++step) {
            const cv::Point2f& p = edges[2 * step];
            const cv::Point2f& q = edges[2 * step + 1];
            const cv::Point2f movedP = p + factor * DirectionAt(cores, (step + steps - 1) % steps);
            const cv::Point2f movedQ = q + factor * DirectionAt(cores, step);
            mover.Move(p, movedP);
            groupExtends[contour].emplace_back(growsBody ? movedP : p, growsBody ? p : movedP);
            groupExtends[contour].emplace_back(growsBody ? movedQ : q, growsBody ? q : movedQ);
        }
    }
}

void MeshBuilder::WriteWalls(VectorMeshWriter& writer, const Contours& contours, size_t group,
                             Layout& layout) const {
    for (size_t contour = 0; contour < contours.m_Edges[group].size(); ++contour) {
        const std::vector<cv::Point2f> steps = StepDirections(contours.m_Edges[group][contour]);
        float u = 0;
        for (size_t step = 0; step < steps.size(); ++step) {
            const auto [p, q] = BodyStep(contours, group, contour, step);
            const cv::Point2f before = steps[(step + steps.size() - 1) % steps.size()];
            const cv::Point2f behind = steps[(step + 1) % steps.size()];
            const cv::Point2f moved = UnitVector(q - p);
            const cv::Point2f direction = moved == cv::Point2f() ? steps[step] : moved;
            const float nextU = u + static_cast<float>(cv::norm(q - p)) * sizeInverse;
            WriteWall(writer, layout.wall, {p, WallNormal(direction, before), u},
                      {q, WallNormal(direction, behind), nextU}, layout.wallHeight,
                      Tangent(direction), groups.back().center);
            layout.wall += 2;
            u = nextU;
        }
    }
}

void MeshBuilder::WriteInnerWalls(VectorMeshWriter& writer, const Contours& contours, size_t group,
                                  Layout& layout) const {
    for (size_t contour = 0; contour < contours.m_Edges[group].size(); ++contour) {
        const size_t count = contours.m_Edges[group][contour].size() / 2;
        std::vector<cv::Point2f> line(2 * count);
        for (size_t step = 0; step < count; ++step) {
            std::tie(line[2 * step], line[2 * step + 1]) = FaceStep(contours, group, contour, step);
        }
        const std::vector<cv::Point2f> steps = StepDirections(line);
        float u = 0;
        for (size_t step = 0; step < count; ++step) {
            const cv::Point2f& p = line[2 * step];
            const cv::Point2f& q = line[2 * step + 1];
            const cv::Point2f& direction = steps[step];
            const cv::Vec3f atP = WallNormal(direction, steps[(step + count - 1) % count]);
            const cv::Vec3f atQ = WallNormal(direction, steps[(step + 1) % count]);
            const float nextU = u + static_cast<float>(cv::norm(q - p)) * sizeInverse;
            WriteWall(writer, layout.innerWall, {q, -atQ, nextU}, {p, -atP, u}, layout.wallHeight,
                      Tangent(direction), groups.back().center);
            layout.innerWall += 2;
            u = nextU;
        }
    }
}

void MeshBuilder::WriteFaces(VectorMeshWriter& writer, const MeshGroup& group,
                             const std::vector<Triangle2f>& front,
                             const std::vector<Triangle2f>& back, Layout& layout) const {
    const cv::Vec3f tangent(1, 0, 0);
    const auto put = [&](int64_t place, int corner, const cv::Point2f& point, float z, float height,
                         const cv::Point2f& uv, float normalZ) {
        writer.Put(place, corner,
                   {{point.x, point.y, z, height}, {uv.x, uv.y, 0}, {0, 0, normalZ}, tangent},
                   group.center);
    };
    const std::vector<Triangle2f>& behind = HasFlatBack() ? back : front;
    for (size_t t = 0; t < front.size(); ++t) {
        const cv::Point2f* corners[3] = {&front[t].a, &front[t].b, &front[t].c};
        for (int i = 0; i < 3; ++i) {
            const cv::Point2f uv = group.faceMap.At(*corners[i]);
            put(layout.front, i, *corners[i], group.frontZ, HeightAt(uv), uv, 1);
        }
        const cv::Point2f* turned[3] = {&behind[t].b, &behind[t].a, &behind[t].c};
        for (int i = 0; i < 3; ++i) {
            put(layout.back, i, *turned[i], group.backZ, 0, group.faceMap.At(*turned[i]), -1);
        }
        ++layout.front;
        ++layout.back;
    }
}

float MeshBuilder::HeightAt(const cv::Point2f& uv) const {
    if (!shape.enableSubdivision || heightPicture.empty()) return 0;
    // Rows go by columns and columns by rows: the picture is meant to be square.
    const int row = static_cast<int>(static_cast<float>(heightPicture.cols) * Fraction(uv.x));
    const int column = static_cast<int>(static_cast<float>(heightPicture.rows) * Fraction(uv.y));
    const uint8_t* line = heightPicture.ptr(std::clamp(row, 0, heightPicture.rows - 1));
    const size_t place = std::clamp(column, 0, heightPicture.cols - 1);
    return static_cast<float>(line[place * heightPicture.elemSize()]) / 255;
}

}  // namespace kelmo
