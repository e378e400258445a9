// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>

#include "geometry/trace/bitmap_trace_steps.h"

namespace kelmo {

namespace {

/// How far the curve at the middle vertex bulges towards it: 0 for a line, 4/3 at most.
double Bulge(const cv::Point2d& before, const cv::Point2d& vertex, const cv::Point2d& after) {
    const cv::Point2d d = after - before;
    const double denominator = TruncatedSign(d.x) * d.x + TruncatedSign(d.y) * d.y;
    if (denominator == 0) {
        return 4.0 / 3.0;
    }
    const double distance = std::abs(Dpara(before, vertex, after) / denominator);
    return (distance > 1 ? 1 - 1 / distance : 0) / 0.75;
}

}  // namespace

void SmoothCurve(Curve& curve, int32_t alphaMax) {
    for (int32_t i = 0; i < curve.n; ++i) {
        const int32_t j = Mod(i + 1, curve.n);
        const cv::Point2d& before = curve.vertex[i];
        const cv::Point2d& vertex = curve.vertex[j];
        const cv::Point2d& after = curve.vertex[Mod(i + 2, curve.n)];
        const size_t at = 3 * static_cast<size_t>(j);

        double alpha = Bulge(before, vertex, after);
        curve.alpha0[j] = alpha;
        if (alpha >= alphaMax) {
            curve.tag[j] = kCornerSegment;
            curve.c[at + 1] = vertex;
        } else {
            alpha = std::clamp(alpha, 0.55, 1.0);
            curve.tag[j] = kCurveSegment;
            curve.c[at] = Interval(0.5 + 0.5 * alpha, before, vertex);
            curve.c[at + 1] = Interval(0.5 + 0.5 * alpha, after, vertex);
        }
        curve.c[at + 2] = Interval(0.5, after, vertex);
        curve.alpha[j] = alpha;
        curve.beta[j] = 0.5;
    }
    curve.alphaCurve = 1;
}

}  // namespace kelmo
