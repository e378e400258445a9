// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/beam/lines/contour_to_lines.h"

#include <cmath>
#include <cstddef>

namespace kelmo {
namespace {

constexpr float kControlShare = 1.0F / 6.0F;

float Sixth(const cv::Point2f& from, const cv::Point2f& to) {
    return std::hypot(to.x - from.x, to.y - from.y) * kControlShare;
}

cv::Point2f Direction(const cv::Point2f& from, const cv::Point2f& to) {
    const cv::Point2f way = to - from;
    const float length = std::hypot(way.x, way.y);
    return length > 0.0F ? way / length : cv::Point2f();
}

}  // namespace

cv::Point2f ToDeviceSpace(const cv::Point2f& pixel, const cv::Size& size) {
    return {(pixel.x / static_cast<float>(size.width) - 0.5F) * 2.0F,
            (pixel.y / static_cast<float>(size.height) - 0.5F) * -2.0F};
}

void ContourToLines::Convert(const std::vector<cv::Point>& contour, const cv::Size& size,
                             float minSegment, bool closed, bool smooth,
                             const CurveLineSink& sink) {
    if (contour.size() < 3) return;
    segments.clear();
    const auto place = [&](std::size_t i) {
        return ToDeviceSpace(cv::Point2f(contour[i % contour.size()]), size);
    };
    const std::size_t last = contour.size() - 1;
    float total = 0.0F;
    cv::Point2f start = place(0);
    for (std::size_t i = 0; i < contour.size() - (closed ? 0 : 1); ++i) {
        const cv::Point2f end = place(i + 1);
        const float length = Sixth(start, end);
        if (length < minSegment && !(closed && i == last)) continue;
        segments.push_back({start, end});
        total += length;
        start = end;
    }
    if (!(total > 0.0F)) return;
    const std::size_t count = segments.size();
    const auto corner = [&](std::size_t k) { return segments[k % count].start; };
    float way = 0.0F;
    for (std::size_t k = 0; k < count; ++k) {
        const cv::Point2f from = corner(k);
        const cv::Point2f to = corner(k + 1);
        const float length = Sixth(segments[k].start, segments[k].end);
        CurveLine line = CurveLine::Straight(segments[k].start, segments[k].end, way / total, 0.0F);
        way += length;
        line.endProgress = way / total;
        if (smooth) {
            const cv::Point2f before = Direction(corner(k + count - 1), from);
            const cv::Point2f along = Direction(from, to);
            const cv::Point2f after = Direction(to, corner(k + 2));
            const float reach = Sixth(from, to);
            line.control1 = from + (before + along) * reach;
            line.control2 = to - (along + after) * reach;
        }
        sink(line);
    }
}

}  // namespace kelmo
