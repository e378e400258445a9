// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cmath>
#include <cstdint>
#include <opencv2/core/types.hpp>

namespace kelmo {

/// From the pixels of a frame (origin top left, y down) to normalised frame space (y up, -1..1 in
/// y, -W/H..W/H in x), turned about the origin. Computed in f64 and rounded to f32 once, behind the
/// turn: a turned outline keeps its shape a bit better than if its points were rounded before as
/// well.
class NormalisedSpace {
public:
    NormalisedSpace(int32_t width, int32_t height, double angleDegrees = 0)
        : w(width),
          h(height),
          cosine(std::cos(angleDegrees * CV_PI / 180)),
          sine(std::sin(angleDegrees * CV_PI / 180)) {}

    cv::Point2f operator()(const cv::Point2d& pixel) const {
        const double x = (pixel.x / w - 0.5) * 2 * w / h;
        const double y = (pixel.y / h - 0.5) * -2;
        return {static_cast<float>(x * cosine - y * sine),
                static_cast<float>(x * sine + y * cosine)};
    }

private:
    double w;
    double h;
    double cosine;
    double sine;
};

}  // namespace kelmo
