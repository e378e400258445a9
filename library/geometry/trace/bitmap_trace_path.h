// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <memory>
#include <opencv2/core/types.hpp>
#include <string>
#include <vector>

namespace kelmo {

/// Values of `Curve::tag`.
enum CurveTag : int32_t { kCurveSegment = 0, kCornerSegment = 1 };

/// A closed outline of `n` segments in pixel-corner coordinates (origin top left, y down). All
/// arrays have one entry per segment, `c` has three.
class Curve {
public:
    explicit Curve(int32_t segments)
        : n(segments),
          tag(segments),
          c(static_cast<size_t>(segments) * 3),
          vertex(segments),
          alpha(segments),
          alpha0(segments),
          beta(segments) {}
    virtual ~Curve() = default;

    /// The last point of segment `i`, where segment `i` + 1 begins.
    const cv::Point2d& End(int32_t i) const { return c[3 * static_cast<size_t>(i) + 2]; }

    int32_t n;
    std::vector<int32_t> tag;  ///< a CurveTag
    /// Curve: control 1, control 2, end. Corner: a point without meaning, vertex, end.
    std::vector<cv::Point2d> c;
    int32_t alphaCurve = 0;  ///< 1 once `tag`, `c` and the alphas are valid
    std::vector<cv::Point2d> vertex;
    std::vector<double> alpha;   ///< how far a curve bulges to its vertex, clamped
    std::vector<double> alpha0;  ///< the same before clamping
    std::vector<double> beta;    ///< where joining has split the polygon edge, 0..1
};

/// Running sums over the points of a path, relative to its first point.
struct Sum {
    double x = 0;
    double y = 0;
    double xy = 0;
    double x2 = 0;
    double y2 = 0;
};

/// One closed walk along pixel edges and what the steps of the tracer make of it.
class Path {
public:
    virtual ~Path() = default;

    int32_t area = 0;              ///< enclosed area in pixels
    int32_t len = 0;               ///< number of points
    std::unique_ptr<Curve> curve;  ///< the result
    std::vector<cv::Point2d> pt;   ///< the walk, one point per pixel edge
    double minX = 100000;
    double minY = 100000;
    double maxX = -1;
    double maxY = -1;
    std::string sign;  ///< "+" when the pixel at the start is ink in the source picture, else "-"
    double x0 = 0;     ///< first point
    double y0 = 0;
    std::vector<Sum> sums;     ///< len + 1 entries
    std::vector<int32_t> lon;  ///< for each point, the last one that a straight line reaches
    int32_t m = 0;             ///< number of corners of the polygon
    std::vector<int32_t> po;   ///< the polygon: indices into `pt`
};

}  // namespace kelmo
