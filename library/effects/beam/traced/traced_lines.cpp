// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/beam/traced/traced_lines.h"

namespace kelmo {
namespace {

cv::Point2f DevicePlace(const cv::Point2d& pixel, const cv::Size& size) {
    return {static_cast<float>((pixel.x / size.width - 0.5) * 2.0),
            static_cast<float>((pixel.y / size.height - 0.5) * -2.0)};
}

void PathLines(const Curve& curve, const cv::Size& size, const CurveLineSink& sink) {
    if (curve.n < 1) return;
    const auto segments = static_cast<float>(curve.n);
    cv::Point2f current = DevicePlace(curve.End(curve.n - 1), size);
    for (int32_t i = 0; i < curve.n; ++i) {
        const cv::Point2d* const c = &curve.c[3 * static_cast<std::size_t>(i)];
        const cv::Point2f second = DevicePlace(c[1], size);
        const cv::Point2f end = DevicePlace(c[2], size);
        const float from = static_cast<float>(i) / segments;
        const float to = static_cast<float>(i + 1) / segments;
        if (curve.tag[static_cast<std::size_t>(i)] == kCurveSegment) {
            sink({current, end, DevicePlace(c[0], size), second, from, to});
        } else {
            const float middle = (static_cast<float>(i) + 0.5F) / segments;
            sink(CurveLine::Straight(current, second, from, middle));
            sink(CurveLine::Straight(second, end, middle, to));
        }
        current = end;
    }
}

}  // namespace

void TracedLines(std::span<const std::unique_ptr<Path>> paths, const cv::Size& size,
                 const CurveLineSink& sink) {
    for (const auto& path : paths) {
        if (path && path->curve) PathLines(*path->curve, size, sink);
    }
}

}  // namespace kelmo
