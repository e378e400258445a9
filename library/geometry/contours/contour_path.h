// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <vector>

#include "geometry/contours/path_info.h"

namespace kelmo {

/// One group of closed outlines that moves as one piece, before flattening.
class ContourPath {
public:
    ContourPath() = default;
    virtual ~ContourPath() = default;
    ContourPath(const ContourPath&) = default;
    ContourPath& operator=(const ContourPath&) = default;
    ContourPath(ContourPath&&) = default;
    ContourPath& operator=(ContourPath&&) = default;

    std::vector<std::vector<PathInfo>> subPaths;  ///< one entry per closed sub-contour
    /// Bounding box of the group's points in normalised frame space, before the text angle.
    float minX = 0;
    float maxX = 0;
    float maxY = 0;
    float minY = 0;
};

}  // namespace kelmo
