// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <opencv2/core/types.hpp>
#include <vector>

#include "geometry/mesh/mesh_builder_shape.h"

namespace kelmo {

/// One point of a bevel's cross section and the section's direction there.
struct BevelRow {
    cv::Vec3f position;
    cv::Vec3f tangent;  ///< derivative along the piece of the section, not of length 1
};

/// The cross section of a bevel, from the body's outline to the face's: rows of points that the
/// strips join. What does not depend on the place along the outline is worked out once. A section
/// always has `RowCount` rows, one more than strips, the last one on the face.
///
/// Plated sections go from the back face around the upright side to the front face. Where the plate
/// has no depth its upright piece is one row shorter, and the piece behind it one row longer.
class BevelProfile {
public:
    /// `frontZ` is the signed height of the face over the body's front, `depth` the body's; in the
    /// back pass the section is mirrored to the body's back.
    BevelProfile(const MeshShape& shape, float depth, float frontZ, bool isBack);

    size_t RowCount() const { return kinds.size(); }

    /// The surface that a row belongs to: 0 face, 1 bulging body, 2 bevel.
    int32_t KindOf(size_t row) const { return kinds[row]; }

    /// Texture coordinate v of a row.
    float TexcoordOf(size_t row) const { return texcoords[row]; }

    /// Radius of the border's edge for a section as wide as from `body` to `face`; only bordered
    /// shapes have one.
    float EdgeRadius(const cv::Point2f& body, const cv::Point2f& face) const;

    /// Whether all sections of an outline take the radius of its first one, so that the border
    /// stays even.
    bool KeepsRadius() const { return shape.hiddenFillingSurface != 1; }

    /// Writes `RowCount` rows.
    void Fill(const cv::Point2f& body, const cv::Point2f& face, float radius, BevelRow* rows) const;

private:
    // A quadratic curve or a straight line, sampled at `rows` places.
    struct Piece {
        int32_t rows;
        bool reachesEnd;  ///< the last row stands at the end instead of before it
    };

    void PlanBevelled();
    void PlanBordered();
    void PlanInflated();
    void PlanPlated();
    void Append(int32_t rows, int32_t kind, bool reachesEnd = false);
    // The piece in which the bevel gives way to the face: half of its rows are the face's where the
    // face stands out, none where it lies back, and the rows of the bevel are counted up to there.
    void AppendEdge(int32_t rows, bool reachesEnd);
    int32_t RowsThrough(size_t piece) const;
    void PlanTexcoords();

    void FillBevelled(const cv::Point2f& body, const cv::Point2f& face, BevelRow* rows) const;
    void FillBordered(const cv::Point2f& body, const cv::Point2f& face, float radius,
                      BevelRow* rows) const;
    void FillInflated(const cv::Point2f& body, const cv::Point2f& face, BevelRow* rows) const;
    void FillPlated(const cv::Point2f& body, const cv::Point2f& face, BevelRow* rows) const;

    const MeshShape& shape;
    float depth;
    float frontZ;
    bool isBack;
    float outlineZ;  // of the body's outline in this pass
    float height;    // signed, of the face over that
    float border;    // share of the width that is rounded
    bool hasBase = false;
    int32_t splitRow = 0;  // v is counted in shares of this many rows
    std::vector<Piece> pieces;
    std::vector<int32_t> kinds;
    std::vector<float> texcoords;
};

}  // namespace kelmo
