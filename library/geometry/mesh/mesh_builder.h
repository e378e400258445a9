// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <opencv2/core.hpp>
#include <vector>

#include "geometry/contours/contours.h"
#include "geometry/mesh/mesh_builder_shape.h"
#include "geometry/mesh/vector_mesh.h"
#include "geometry/mesh/vector_mesh_writer.h"

namespace kelmo {

/// How points become texture coordinates of a face: u and v are 0.5 in the centre.
struct MeshFaceMap {
    float width = 0;
    float height = 0;
    float aspect = 0;
    cv::Point2f center;
    float cosine = 1;
    float sine = 0;

    cv::Point2f At(const cv::Point2f& point) const;
};

/// What later passes want to know of a group that was built.
struct MeshGroup {
    float frontZ = 0;
    float backZ = 0;
    cv::Vec4f center;    ///< x, y, z and the group's number
    float offsetFactor;  ///< how far a point moves for a direction of length 1
    MeshFaceMap faceMap;
};

/// Turns parsed contours into a mesh: front faces, back faces, side walls, bevel strips,
/// decoration, in this order. Normalised frame space; the front lies at z = 0 or above, the back
/// below.
///
/// Faces, walls and decoration wind clockwise seen from outside; the strips of bevels wind the
/// other way, so that a mesh with bevels is drawn without culling by winding. Normals point
/// outwards.
///
/// A step without length takes the direction of the step before; where an outline turns back on
/// itself a wall keeps its own normal instead of an average without length. One thread at a time.
class MeshBuilder {
public:
    virtual ~MeshBuilder() = default;

    /// The shape to build, adjusted (`AdjustShape`). It is settled once more, since counting and
    /// writing rely on that.
    void SetShape(const MeshShape& adjusted) { shape = SettleShape(adjusted); }
    const MeshShape& Shape() const { return shape; }

    /// The picture whose first byte lifts the faces when the shape is subdivided; an empty one
    /// lifts nothing. Meant to be square; a place beyond its edge is taken at the edge.
    void SetHeightPicture(const cv::Mat& picture) { heightPicture = picture; }

    /// Builds `contours` with a depth of `extrude` x 1.8 x the largest group size into `mesh` and
    /// fills `m_EdgeExtends`. `useLimit` is kept for the callers' sake; it is always false. False,
    /// and a line in the log, when there is nothing to build or no memory for it. Without memory
    /// the mesh is empty. With nothing to build it holds what it held, also when that is an older
    /// mesh: whoever draws it goes on with that, and must not be told that it is the new one.
    bool BuildMesh(VectorMesh& mesh, Contours& contours, float extrude, bool useLimit);

    /// Number of triangles that `BuildMesh` writes; also the steps of the outlines (twice for an
    /// outline-only model) and the triangles of the faces.
    virtual int64_t CountTriangles(const Contours& contours, int64_t& sideCount,
                                   int64_t& faceCount) const;

    /// Height of the bevel in units of the group size.
    float BevelDepth() const;

    /// The groups of the last `BuildMesh`, in order.
    const std::vector<MeshGroup>& Groups() const { return groups; }

protected:
    /// Appends the bevel strips from `firstTriangle` on. Nothing here.
    virtual void BuildBevel(VectorMeshWriter& writer, const Contours& contours,
                            int64_t firstTriangle) const;

    bool IsOutlineOnly() const {
        return shape.hiddenFillingSurface == 1 && shape.modelType == MeshShape::kBordered;
    }
    bool HasWalls() const {
        return shape.modelType == MeshShape::kBevelled || shape.modelType == MeshShape::kBordered;
    }
    /// The back is closed by the body's outline rather than by the face's.
    bool HasFlatBack() const {
        return (shape.modelType == MeshShape::kBordered ||
                shape.modelType == MeshShape::kInflated) &&
               shape.extrusionType == 0;
    }

    MeshShape shape;
    std::vector<MeshGroup> groups;
    float depth = 0;
    float sizeInverse = 0;  ///< makes lengths along outlines relative to the largest group

private:
    struct Layout;

    MeshGroup PlaceGroup(const Contours& contours, size_t group, float extrude) const;
    MeshFaceMap MapFaces(const Contours& contours, size_t group) const;
    void OffsetGroup(Contours& contours, size_t group, std::vector<Triangle2f>& front,
                     std::vector<Triangle2f>& back) const;
    void WriteWalls(VectorMeshWriter& writer, const Contours& contours, size_t group,
                    Layout& layout) const;
    void WriteInnerWalls(VectorMeshWriter& writer, const Contours& contours, size_t group,
                         Layout& layout) const;
    void WriteFaces(VectorMeshWriter& writer, const MeshGroup& group,
                    const std::vector<Triangle2f>& front, const std::vector<Triangle2f>& back,
                    Layout& layout) const;
    float HeightAt(const cv::Point2f& uv) const;

    cv::Mat heightPicture;
};

}  // namespace kelmo
