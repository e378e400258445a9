// SPDX-License-Identifier: GPL-3.0-or-later
#include "geometry/mesh/bevel_mesh_builder.h"

#include <algorithm>

#include "geometry/mesh/bevel_normals.h"
#include "geometry/mesh/bevel_profile.h"
#include "geometry/offset/edge_offset.h"

namespace kelmo {
namespace {

using Extends = std::vector<EdgeExtendInfo>;

// Writes the strips of one pass, outline by outline.
class BevelPass {
public:
    BevelPass(VectorMeshWriter& meshWriter, const MeshGroup& meshGroup,
              const BevelProfile& bevelProfile, bool back, float lengthFactor)
        : writer(meshWriter),
          group(meshGroup),
          profile(bevelProfile),
          isBack(back),
          sizeInverse(lengthFactor),
          rowCount(bevelProfile.RowCount()) {}

    // Returns the place behind the last triangle.
    int64_t Write(const Extends& extends, int64_t firstTriangle) {
        FillRows(extends);
        FillNormals(extends);
        int64_t triangle = firstTriangle;
        float u = 0;
        for (size_t step = 0; step < extends.size() / 2; ++step) {
            const float length = static_cast<float>(
                cv::norm(extends[2 * step + 1].bodyPoint - extends[2 * step].bodyPoint));
            const float nextU = u + length * sizeInverse;
            for (size_t row = 0; row + 1 < rowCount; ++row) {
                WriteQuad(triangle, step, row, u, nextU);
                triangle += 2;
            }
            u = nextU;
        }
        return triangle;
    }

private:
    const BevelRow* Start(size_t step) const { return &rows[2 * step * rowCount]; }
    const BevelRow* End(size_t step) const { return &rows[(2 * step + 1) * rowCount]; }

    void FillRows(const Extends& extends) {
        rows.resize(extends.size() * rowCount);
        float radius = 0;
        for (size_t i = 0; i < extends.size(); ++i) {
            const cv::Point2f& body = extends[i].bodyPoint;
            const cv::Point2f& face = extends[i].facePoint;
            BevelRow* target = &rows[i * rowCount];
            // A step mostly begins where the one before it ends.
            if (i > 0 && body == extends[i - 1].bodyPoint && face == extends[i - 1].facePoint) {
                std::copy_n(target - rowCount, rowCount, target);
                continue;
            }
            if (i == 0 || !profile.KeepsRadius()) radius = profile.EdgeRadius(body, face);
            profile.Fill(body, face, radius, target);
        }
    }

    void FillNormals(const Extends& extends) {
        const size_t steps = extends.size() / 2;
        normals.Reset(steps, rowCount - 1, isBack);
        fallback.resize(steps);
        for (size_t step = 0; step < steps; ++step) {
            const cv::Point2f along =
                UnitVector(extends[2 * step + 1].bodyPoint - extends[2 * step].bodyPoint);
            fallback[step] = along == cv::Point2f() ? cv::Vec3f(0, 0, isBack ? -1.0f : 1.0f)
                                                    : cv::Vec3f(-along.y, along.x, 0);
            for (size_t row = 0; row + 1 < rowCount; ++row) {
                const cv::Vec3d rising(End(step)[row].position - Start(step)[row + 1].position);
                const cv::Vec3d falling(Start(step)[row].position - End(step)[row + 1].position);
                const cv::Vec3d area = rising.cross(falling);
                normals.Set(step, row, isBack ? -area : area);
            }
        }
        normals.Straighten(fallback);
    }

    cv::Vec3f Texcoord(const BevelRow& row, size_t place, size_t rowOfV, float u) const {
        const auto kind = static_cast<float>(profile.KindOf(place));
        if (kind == 0) {
            const cv::Point2f uv = group.faceMap.At({row.position[0], row.position[1]});
            return {uv.x, uv.y, kind};
        }
        return {u, profile.TexcoordOf(rowOfV), kind};
    }

    void WriteQuad(int64_t triangle, size_t step, size_t row, float u, float nextU) {
        // The back pass turns the quad over by exchanging its rows, but for their v.
        const size_t low = isBack ? row + 1 : row;
        const size_t high = isBack ? row : row + 1;
        const cv::Vec3f atStart = normals.AtStart(step, row);
        const cv::Vec3f atEnd = normals.AtEnd(step, row);
        const auto vertex = [&](const BevelRow* end, size_t place, const cv::Vec3f& normal,
                                float along) {
            const BevelRow& at = end[place];
            const size_t rowOfV = isBack ? 2 * row + 1 - place : place;
            return MeshVertex{{at.position[0], at.position[1], at.position[2], 0},
                              Texcoord(at, place, rowOfV, along),
                              normal,
                              at.tangent};
        };
        const MeshVertex aHigh = vertex(Start(step), high, atStart, u);
        const MeshVertex bLow = vertex(End(step), low, atEnd, nextU);
        writer.Put(triangle, 0, aHigh, group.center);
        writer.Put(triangle, 1, vertex(End(step), high, atEnd, nextU), group.center);
        writer.Put(triangle, 2, bLow, group.center);
        writer.Put(triangle + 1, 0, vertex(Start(step), low, atStart, u), group.center);
        writer.Put(triangle + 1, 1, aHigh, group.center);
        writer.Put(triangle + 1, 2, bLow, group.center);
    }

    VectorMeshWriter& writer;
    const MeshGroup& group;
    const BevelProfile& profile;
    bool isBack;
    float sizeInverse;
    size_t rowCount;
    std::vector<BevelRow> rows;  // two sections a step: at its start and at its end
    std::vector<cv::Vec3f> fallback;
    BevelNormals normals;
};

}  // namespace

bool BevelMeshBuilder::HasBackPass() const {
    return shape.extrusionType != 0 || shape.modelType == MeshShape::kBevelled || IsOutlineOnly();
}

int64_t BevelMeshBuilder::CountTriangles(const Contours& contours, int64_t& sideCount,
                                         int64_t& faceCount) const {
    const int64_t plain = MeshBuilder::CountTriangles(contours, sideCount, faceCount);
    if (shape.bevelSize == 0) return plain;
    if (IsOutlineOnly()) return plain + sideCount / 2 * shape.bevelSegments * 4;
    if (shape.modelType == MeshShape::kInflated) {
        const int64_t upperPasses = HasBackPass() ? 2 : 1;
        return plain +
               sideCount * (shape.baseBevelSegments + upperPasses * shape.upperBevelSegments) * 2;
    }
    return plain + sideCount * shape.bevelSegments * (HasBackPass() ? 4 : 2);
}

void BevelMeshBuilder::BuildBevel(VectorMeshWriter& writer, const Contours& contours,
                                  int64_t firstTriangle) const {
    if (shape.bevelSize == 0) return;
    int64_t triangle = firstTriangle;
    for (size_t group = 0; group < groups.size(); ++group) {
        const auto& outlines = contours.m_EdgeExtends[group];
        const auto isEmpty = [](const Extends& extends) { return extends.empty(); };
        if (std::all_of(outlines.begin(), outlines.end(), isEmpty)) continue;
        const float frontZ = groups[group].frontZ;
        const BevelProfile frontProfile(shape, depth, frontZ, false);
        const BevelProfile backProfile(shape, depth, frontZ, true);
        BevelPass front(writer, groups[group], frontProfile, false, sizeInverse);
        BevelPass back(writer, groups[group], backProfile, true, sizeInverse);
        for (const Extends& extends : outlines) {
            triangle = front.Write(extends, triangle);
            if (HasBackPass()) triangle = back.Write(extends, triangle);
        }
    }
}

}  // namespace kelmo
