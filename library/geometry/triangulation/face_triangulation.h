// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <opencv2/core/types.hpp>
#include <vector>

#include "geometry/triangulation/polyline.h"
#include "geometry/triangulation/triangle2f.h"

namespace kelmo {

/// Fills one face: appends to `out` the triangles between `outer` and `holes`.
///
/// `points` are the points of all these contours and any inner points that the face shall have.
/// The triangles carry the given points bit for bit; their orientation is mixed. Fewer than 3
/// points, or fewer than 3 in `outer`, add nothing. Points that are not finite are left out.
///
/// Delaunay first, repairs afterwards: contour edges that are missing are forced in, triangles
/// outside the material are carved away, both twice, and contour points whose fan of triangles has
/// a gap are refilled; what that adds is carved by every contour once more, since a point's own
/// contour does not know of the holes beside it. Contours that cross themselves come out as the
/// repairs leave them. Time grows with the number of points, but for an outline that needs many
/// repairs. Keeps no state.
void Triangulate(std::vector<Triangle2f>& out, const std::vector<cv::Point2f>& points,
                 const Polyline& outer, const std::vector<const Polyline*>& holes);

}  // namespace kelmo
