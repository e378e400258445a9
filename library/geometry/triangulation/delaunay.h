// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <opencv2/core/types.hpp>
#include <vector>

#include "geometry/triangulation/triangle2f.h"

namespace kelmo {

/// Appends an unconstrained Delaunay triangulation of `points` to `out`; corners are the points bit
/// for bit, the orientation is mixed. Points closer than a ten-millionth of the size stand for one.
///
/// `cv::Subdiv2D` does the work. Points go in scaled up by a power of two, since its tolerances are
/// absolute, and spread out rather than in their order, which takes a third of the time less; when
/// it throws, once more in their order. Order decides between triangulations that are equally good
/// (four points on a circle) and of which two points as good as one is kept, nothing else.
///
/// When that throws as well (a point beyond +-1000000, say) the reason is logged and
/// `DT::DelaunayTriangle` takes over. That one is quadratic: above 10000 points it is not tried,
/// the face stays empty, and the log says so.
void GetDelaunayTriangleList(std::vector<Triangle2f>& out, const std::vector<cv::Point2f>& points);

}  // namespace kelmo
