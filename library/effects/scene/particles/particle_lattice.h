// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <opencv2/core.hpp>
#include <vector>

namespace kelmo {

/// Particles in rows and columns, as vertex data: six vertices (two triangles) each, all at the
/// particle's place.
class ParticleLattice {
public:
    /// Larger lattices are not built; the sizes below keep to it.
    static constexpr int32_t kMost = 200000;

    /// Columns and rows for `count` particles along the longer side of a frame, square in it.
    static cv::Size FlatSize(int32_t count, int32_t frameWidth, int32_t frameHeight);
    /// The nearest sizes (x, y, z) that can be: none below 0, together kMost at most.
    static cv::Vec3i BoxSize(const cv::Vec3i& wanted);

    /// A flat one over -1..1, from the corner (-1, -1) on, one step short of 1. Positions: x, y, 0.
    void BuildFlat(const cv::Size& size);
    /// A box round the origin, one unit between neighbours. Positions: x, y, z and a number of the
    /// particle's own in 0..1, which repeats from run to run.
    void BuildBox(const cv::Vec3i& size);

    int32_t VertexCount() const { return static_cast<int32_t>(corners.size() / 2); }
    /// 3 floats a vertex of a flat lattice, 4 of a box.
    const float* Positions() const { return positions.data(); }
    const float* Corners() const { return corners.data(); }  ///< 2 floats a vertex, -1..1

private:
    void Resize(int32_t particles, std::size_t components);
    void Put(std::size_t particle, const float* place, std::size_t components);

    std::vector<float> positions;
    std::vector<float> corners;
};

}  // namespace kelmo
