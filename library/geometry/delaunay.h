// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <opencv2/core/types.hpp>
#include <vector>

#include "geometry/triangle2f.h"

namespace kelmo {

/// Appends an unconstrained Delaunay triangulation of `points` to `out`; corners are the points bit
/// for bit, the orientation is mixed. Points closer than a ten-millionth of the size stand for one.
///
/// `cv::Subdiv2D` does the work; when it throws (a point beyond +-1000000, say) the reason is
/// logged and `DT::DelaunayTriangle` takes over. That one is quadratic: above 10000 points it is
/// not tried, the face stays empty, and the log says so.
void GetDelaunayTriangleList(std::vector<Triangle2f>& out, const std::vector<cv::Point2f>& points);

}  // namespace kelmo
