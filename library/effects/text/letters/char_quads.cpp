// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/text/letters/char_quads.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <opencv2/imgproc.hpp>

namespace kelmo {
namespace {

/// On each side, in pixels.
constexpr float kMargin = 2.0F;

void AddPixels(const CharOutlines::Polylines& outlines, const cv::Size& frame,
               std::vector<cv::Point2f>& points) {
    for (const auto& line : outlines) {
        for (const cv::Point2f& p : line) {
            points.emplace_back(p.x * static_cast<float>(frame.width),
                                (1.0F - p.y) * static_cast<float>(frame.height));
        }
    }
}

cv::RotatedRect RectangleOf(const std::vector<cv::Point2f>& points) {
    return points.empty() ? cv::RotatedRect() : cv::minAreaRect(points);
}

cv::Point2f Moved(const cv::Matx23d& m, const cv::Point2f& p) {
    return {static_cast<float>(m(0, 0) * p.x + m(0, 1) * p.y + m(0, 2)),
            static_cast<float>(m(1, 0) * p.x + m(1, 1) * p.y + m(1, 2))};
}

}  // namespace

cv::RotatedRect TightRectangle(const std::vector<CharOutlines::Polylines>& chars,
                               const cv::Size& frame) {
    std::vector<cv::Point2f> points;
    for (const auto& outlines : chars) AddPixels(outlines, frame, points);
    return RectangleOf(points);
}

std::vector<CharQuad> BuildCharQuads(const CharOutlines& outlines, const cv::Size& frame,
                                     const cv::Matx23d& placement) {
    std::vector<CharQuad> quads;
    std::vector<cv::Point2f> points;
    const auto w = static_cast<float>(frame.width);
    const auto h = static_cast<float>(frame.height);
    for (const auto& polylines : outlines.CharPolylines()) {
        points.clear();
        AddPixels(polylines, frame, points);
        cv::RotatedRect rectangle = RectangleOf(points);
        CharQuad quad;
        quad.angle = rectangle.angle;
        rectangle.size += cv::Size2f(2.0F * kMargin, 2.0F * kMargin);
        cv::Point2f corners[4];
        rectangle.points(corners);
        for (std::size_t k = 0; k < quad.corners.size(); ++k) {
            const cv::Point2f at = Moved(placement, corners[k]);
            quad.corners[k] = {at.x / w, 1.0F - at.y / h};
        }
        const cv::Point2f middle = Moved(placement, rectangle.center);
        quad.center = {2.0F * (middle.x / w - 0.5F), -2.0F * (middle.y / h - 0.5F)};
        quads.push_back(quad);
    }
    return quads;
}

UprightCorners OrderCorners(const std::array<cv::Point2f, 4>& corners, const cv::Point2f& center,
                            float degrees, float aspect) {
    const double radians = static_cast<double>(degrees) * CV_PI / 180.0;
    const auto c = static_cast<float>(std::cos(radians));
    const auto s = static_cast<float>(std::sin(radians));
    std::array<cv::Point2f, 4> turned;
    for (std::size_t k = 0; k < corners.size(); ++k) {
        const cv::Point2f d((corners[k].x - center.x) * aspect, corners[k].y - center.y);
        turned[k] = {(c * d.x - s * d.y) / aspect + center.x, s * d.x + c * d.y + center.y};
    }
    std::array<std::size_t, 4> order{0, 1, 2, 3};
    std::stable_sort(order.begin(), order.end(),
                     [&turned](std::size_t a, std::size_t b) { return turned[a].y < turned[b].y; });
    const std::size_t start = turned[order[1]].x > turned[order[0]].x ? order[0] : order[1];
    const auto corner = [&](std::size_t k) { return corners[(start + k) % corners.size()]; };
    return {corner(0), corner(1), corner(2), corner(3)};
}

void FillCharPlaces(const std::vector<CharQuad>& quads, std::vector<float>& positions,
                    std::vector<float>& texcoords) {
    FillCharVertices<3>(quads, positions, [](const CharQuad& quad, std::size_t, std::size_t k) {
        const cv::Point2f at = quad.DeviceCorner(k);
        return std::array{at.x, at.y, 0.0F};
    });
    FillCharVertices<2>(quads, texcoords, [](const CharQuad& quad, std::size_t, std::size_t k) {
        return std::array{quad.corners[k].x, quad.corners[k].y};
    });
}

}  // namespace kelmo
