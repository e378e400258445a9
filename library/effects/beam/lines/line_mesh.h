// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <vector>

namespace kelmo {

/// The vertices of lines, which say what they belong to and not where they are: attribute
/// "position" is the step along the line as (k, k + 1), "texcoord" the corner of that step's quad
/// and, in a mesh for more lines than one, the number of the line. Ordered step by step, so that a
/// pass that draws the first vertices draws every line with fewer steps.
class LineMesh {
public:
    static constexpr int32_t kSteps = 3000;
    /// More would take memory without end.
    static constexpr int32_t kMostLines = 64;

    /// Builds the mesh for so many lines; does nothing when it is built. Fewer than one: empty.
    void Build(int32_t lines);
    /// As built, at most `kMostLines`.
    int32_t Lines() const { return meshLines; }
    /// Of `steps` steps (0..3000) of every line.
    int32_t VertexCount(int32_t steps) const;
    /// Floats of "texcoord" a vertex.
    int32_t CornerComponents() const { return meshLines < 2 ? 2 : 3; }
    const std::vector<float>& Positions() const { return positions; }
    const std::vector<float>& Corners() const { return corners; }

private:
    int32_t meshLines = 0;
    std::vector<float> positions;
    std::vector<float> corners;
};

}  // namespace kelmo
