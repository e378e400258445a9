// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <opencv2/core/types.hpp>
#include <vector>

namespace kelmo {

/// The normals of a bevel's quads around one closed outline, step by step, and their averages at
/// the joints of the steps. Reused from outline to outline so that nothing is allocated again.
class BevelNormals {
public:
    /// `isBack`: the strips face away from the viewer.
    void Reset(size_t stepCount, size_t quadsPerStep, bool isBack);

    /// Takes twice the area vector of a quad (the cross product of its diagonals), outwards.
    void Set(size_t step, size_t quad, const cv::Vec3d& areaVector);

    /// Replaces what is out of line. Where a bevel is wider than the shape has room for, its strips
    /// cross and some quads turn over: a normal that points to the other side than the bevel, or
    /// has no area behind it, takes the place of the nearest one that is fine among three steps on
    /// each side. Rows that are overhangs all around keep their normals. `fallback` has one
    /// direction per step for quads without area that find no neighbour.
    ///
    /// The bevel's side is that which the strips face, front or back, for sunken faces too: their
    /// slopes face the viewer as well.
    void Straighten(const std::vector<cv::Vec3f>& fallback);

    /// Means of the normals of the step and the one before, the step and the next; wrapping.
    cv::Vec3f AtStart(size_t step, size_t quad) const;
    cv::Vec3f AtEnd(size_t step, size_t quad) const;

private:
    struct Normal {
        cv::Vec3f direction;
        bool isGood;
    };

    cv::Vec3f Mean(size_t step, size_t other, size_t quad) const;
    const Normal* NearestGood(size_t step, size_t quad) const;

    size_t steps = 0;
    size_t quads = 0;
    float side = 1;
    std::vector<Normal> raw;          // step by step
    std::vector<cv::Vec3f> straight;  // the same places
};

}  // namespace kelmo
