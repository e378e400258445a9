// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <vector>

namespace kelmo {

/// A swarm of bubbles as quads, six vertices each: 4, 3 and 4 floats a vertex. Every number comes
/// from a fixed hash of the bubble's index, so that the swarm is the same in every render and on
/// every machine.
struct BubbleSwarm {
    std::vector<float> positions;   ///< x, y (device space), 0, 1
    std::vector<float> texcoords;   ///< corner -1..1, index of the bubble
    std::vector<float> attributes;  ///< four numbers that the shader reads as size, pace and drift

    int32_t VertexCount() const { return static_cast<int32_t>(positions.size() / 4); }
};

/// 0..1 from a number: the fraction of its sine, far behind the point.
double BubbleHash(float a);

/// 80 bubbles of all sizes, or 160 of which most are fine.
BubbleSwarm MakeBubbles();
BubbleSwarm MakeFineBubbles();

}  // namespace kelmo
