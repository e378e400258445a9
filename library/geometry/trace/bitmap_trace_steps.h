// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cmath>
#include <cstdint>
#include <opencv2/core/types.hpp>

#include "geometry/trace/bitmap_trace_path.h"

/// The steps that turn one pixel-edge walk into curves, in the order in which they run, and the
/// few formulas that they share. Each works on its path alone. The method is that of P. Selinger,
/// "Potrace: a polygon-based tracing algorithm" (2003), with integer roundings of our own that
/// pictures of existing projects depend on; they are pointed out where they happen.
namespace kelmo {

/// The running sums over the walk.
void ComputeSums(Path& path);

/// `lon`: how far a straight line reaches from each point.
void ComputeStraightReach(Path& path);

/// `m` and `po`: the polygon with the fewest corners, among those the one with the least penalty.
void FindPolygon(Path& path);

/// `curve` with its vertices: polygon corners moved, within half a pixel, to where the lines
/// fitted to their two edges meet.
void AdjustVertices(Path& path);

/// Corners and curves from the vertices. An alpha of `alphaMax` or more makes a corner.
void SmoothCurve(Curve& curve, int32_t alphaMax);

/// Replaces runs of curves by single ones where these stay within `tolerance` pixels.
void JoinCurves(Path& path, double tolerance);

inline int32_t Mod(int32_t a, int32_t n) {
    return a >= n ? a % n : a >= 0 ? a : n - 1 - (-1 - a) % n;
}

/// Sign of `v` truncated toward zero: values within (-1, 1) count as 0.
inline int32_t TruncatedSign(double v) {
    return v >= 1 ? 1 : v <= -1 ? -1 : 0;
}

/// `v` truncated toward zero to 32 bits.
inline int32_t Truncate(double v) {
    return v >= 2147483647.0    ? 2147483647
           : v <= -2147483648.0 ? -2147483647 - 1
           : std::isnan(v)      ? 0
                                : static_cast<int32_t>(v);
}

inline double Cross(const cv::Point2d& a, const cv::Point2d& b) {
    return a.x * b.y - a.y * b.x;
}

/// Twice the signed area of the triangle p0, p1, p2.
inline double Dpara(const cv::Point2d& p0, const cv::Point2d& p1, const cv::Point2d& p2) {
    return Cross(p1 - p0, p2 - p0);
}

inline cv::Point2d Interval(double t, const cv::Point2d& a, const cv::Point2d& b) {
    return a + t * (b - a);
}

/// Whether `b` lies in the cyclic range from `a` up to, but not including, `c`.
inline bool Cyclic(int32_t a, int32_t b, int32_t c) {
    return a <= c ? a <= b && b < c : a <= b || b < c;
}

}  // namespace kelmo
