// SPDX-License-Identifier: GPL-3.0-or-later
#include "geometry/contours/path_info.h"

namespace kelmo {

namespace {

cv::Point2f Mix(const cv::Point2f& a, const cv::Point2f& b, float t) {
    return a * (1 - t) + b * t;
}

}  // namespace

PathInfo PathInfo::Line(const cv::Point2f& start, const cv::Point2f& end) {
    PathInfo path;
    path.start = path.control1 = start;
    path.end = path.control2 = end;
    return path;
}

PathInfo PathInfo::Quadratic(const cv::Point2f& start, const cv::Point2f& control,
                             const cv::Point2f& end) {
    PathInfo path = Line(start, end);
    path.control1 = control;
    path.type = kPathQuadratic;
    return path;
}

PathInfo PathInfo::Cubic(const cv::Point2f& start, const cv::Point2f& control1,
                         const cv::Point2f& control2, const cv::Point2f& end) {
    PathInfo path = Line(start, end);
    path.control1 = control1;
    path.control2 = control2;
    path.type = kPathCubic;
    return path;
}

cv::Point2f PathInfo::At(float t) const {
    // The ends are returned bit for bit: neighbouring segments share them, and everything that
    // is built on the polyline compares points exactly.
    if (t <= 0) {
        return start;
    }
    if (t >= 1) {
        return end;
    }
    if (type == kPathLine) {
        return Mix(start, end, t);
    }
    if (type == kPathQuadratic) {
        const float s = 1 - t;
        return start * (s * s) + control1 * (2 * t * s) + end * (t * t);
    }
    const cv::Point2f middle = Mix(control1, control2, t);
    const cv::Point2f left = Mix(Mix(start, control1, t), middle, t);
    const cv::Point2f right = Mix(middle, Mix(control2, end, t), t);
    return Mix(left, right, t);
}

}  // namespace kelmo
