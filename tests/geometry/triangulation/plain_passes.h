// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "geometry/triangulation/face_triangulation.h"

namespace kelmo::test {

/// The face triangulation as it is defined: every pass scans the whole list of triangles for each
/// edge and each point, and every probe goes through `cv::pointPolygonTest`. Slow, and what the
/// indexed passes must agree with, triangle by triangle and in the same order.
void PlainTriangulate(std::vector<Triangle2f>& out, const std::vector<cv::Point2f>& points,
                      const Polyline& outer, const std::vector<const Polyline*>& holes);

}  // namespace kelmo::test
