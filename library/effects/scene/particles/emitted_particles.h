// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <opencv2/core.hpp>
#include <vector>

namespace kelmo {

/// Particles scattered at random, as vertex data: six vertices (two triangles) each, all with the
/// particle's own numbers. A vertex shader moves them; nothing here depends on the time. The same
/// count over the same picture gives the same particles.
class EmittedParticles {
public:
    /// Larger counts are cut to this.
    static constexpr int32_t kMost = 200000;
    static int32_t Within(int64_t count);

    /// Over what is not black in a picture of 4 channels of 8 bits (y down).
    ///
    /// Positions: x, y, z in -1..1 and a size of 0.01..0.16. Directions: x, y, z in -1..1 and the
    /// same size. Corners: x, y in -1..1 and a number of the particle's own, 0..1.
    void BuildOver(const cv::Mat& picture, int32_t particles);
    /// Over the whole frame. Positions: x, y, z in -1..1 and a number of the particle's own, 0..1.
    /// Corners: x, y, and the particle's index. No directions.
    void Build(int32_t particles);

    int32_t Count() const { return count; }
    int32_t VertexCount() const;
    const float* Positions() const { return positions.data(); }    ///< 4 floats a vertex
    const float* Directions() const { return directions.data(); }  ///< 4 floats a vertex
    const float* Corners() const { return corners.data(); }        ///< 3 floats a vertex

private:
    void Resize(int32_t particles, bool withDirections);
    void PutVertices(std::size_t particle, const cv::Vec4f& position, float third);

    int32_t count = 0;
    std::vector<float> positions;
    std::vector<float> directions;
    std::vector<float> corners;
};

}  // namespace kelmo
