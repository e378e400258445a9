// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/beam/lines/line_mesh.h"

#include <algorithm>
#include <cstddef>

#include "framework/shared/quad_corners.h"

namespace kelmo {

void LineMesh::Build(int32_t lines) {
    const int32_t wanted = std::clamp(lines, 0, kMostLines);
    if (wanted == meshLines) return;
    meshLines = wanted;
    positions.clear();
    corners.clear();
    const std::size_t vertices =
        static_cast<std::size_t>(kSteps) * kQuadVertices * static_cast<std::size_t>(meshLines);
    positions.reserve(vertices * 2);
    corners.reserve(vertices * static_cast<std::size_t>(CornerComponents()));
    for (int32_t step = 0; step < kSteps; ++step) {
        for (int32_t line = 0; line < meshLines; ++line) {
            for (const auto& [x, y] : kQuadCorners) {
                positions.push_back(static_cast<float>(step));
                positions.push_back(static_cast<float>(step + 1));
                corners.push_back(x);
                corners.push_back(y);
                if (meshLines > 1) corners.push_back(static_cast<float>(line));
            }
        }
    }
}

int32_t LineMesh::VertexCount(int32_t steps) const {
    return std::clamp(steps, 0, kSteps) * kQuadVertices * meshLines;
}

}  // namespace kelmo
