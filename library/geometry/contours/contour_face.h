// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "geometry/contours/contours.h"

namespace kelmo {

/// Sorts flattened outlines into outer contours and holes and fills the faces between them. Keeps
/// no state.
class ContourFace {
public:
    /// More rows or columns of a grid count as so many: 32 MB of points for each group.
    static constexpr int32_t kMaxGridSide = 2048;

    virtual ~ContourFace() = default;

    /// Fills `m_EdgeCores`, `m_Triangles`, `m_GroupRects`, `m_AllRect` and the two group sizes of
    /// `contours` from its `m_Points`; the lists have one entry per group. With `grid`, the faces
    /// get inner points on a grid of `gridRows` x `gridCols` over the upright box of each group;
    /// none with a count of 0 or less.
    ///
    /// Outer contours run clockwise (y up), holes counter-clockwise. A hole belongs to every outer
    /// contour that its first point lies in; one that lies in none is left out. All triangles come
    /// out clockwise.
    ///
    /// A group without points gets an empty rectangle and does not count for the sizes. An error of
    /// OpenCV is logged and leaves `contours` without anything derived.
    void ParseContours(Contours& contours, bool grid, int32_t gridRows, int32_t gridCols) const;
};

}  // namespace kelmo
