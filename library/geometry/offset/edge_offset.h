// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <opencv2/core/types.hpp>
#include <vector>

#include "geometry/offset/edge_core_info.h"
#include "geometry/offset/edge_extend_info.h"

namespace kelmo {

/// Moving the points of an outline along their mitres. All numbers are in the space of the points
/// given; the functions keep no state and may run on any thread.
///
/// The offset is plain: nothing looks at the neighbouring edges, so an offset larger than the
/// narrowest part of a shape makes the moved outline cross itself.

/// `vector` at length 1, worked out in double precision; (0, 0) for a vector without length or with
/// a coordinate that is not finite.
cv::Point2f UnitVector(const cv::Point2f& vector);

/// Where a corner between the unit directions `incoming` and `outgoing` goes for an offset of 1: to
/// the point at distance 1 from both edges, on the right-hand side in a y-up system. That is into
/// the material for clockwise outer contours and counter-clockwise holes. Straight runs give length
/// 1, sharp corners grow without limit. The unit directions are floats; from there on everything is
/// worked out in double precision and rounded once, since a mitre between almost parallel edges is
/// the quotient of two small differences. A full reversal has no such point and gives (0, 0): the
/// tip of a hairline stays where it is rather than shooting off.
cv::Point2f OffsetDirection(const cv::Point2f& incoming, const cv::Point2f& outgoing);

/// The offset direction of each point of a closed polyline; the result runs parallel to `points`.
/// Points that repeat their neighbour take the direction of the corner that they stand for, so that
/// they stay together; a polyline without any length gives (0, 0) throughout.
std::vector<EdgeCoreInfo> OffsetDirections(const std::vector<cv::Point2f>& points);

/// The unit direction of each step of a polyline given as pairs (step k from place 2k to 2k + 1). A
/// step without length takes the direction of the step before it, wrapping around; when no step has
/// one, all run along x, so that what is built on them still has normals.
std::vector<cv::Point2f> StepDirections(const std::vector<cv::Point2f>& edges);

}  // namespace kelmo
