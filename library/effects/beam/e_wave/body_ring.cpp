// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/beam/e_wave/body_ring.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "effects/beam/lines/contour_to_lines.h"

namespace kelmo {
namespace {

constexpr std::size_t kRingLines = 4;

cv::Point2f Direction(const cv::Point2f& from, const cv::Point2f& to) {
    const cv::Point2f way = to - from;
    const float length = std::hypot(way.x, way.y);
    return length > 0.0F ? way / length : cv::Point2f();
}

}  // namespace

cv::Rect RingInBand(const std::vector<cv::Point>& contour, const cv::Rect& box, const Band& band) {
    int32_t left = box.x + box.width;
    int32_t right = box.x;
    for (std::size_t i = 0; i < contour.size(); ++i) {
        const cv::Point p = contour[i];
        const cv::Point next = contour[(i + 1) % contour.size()];
        int32_t x = p.x;
        if (p.y < band.top || p.y > band.top + band.height) {
            const int32_t down = band.height / 2 + band.top - p.y;
            const int32_t whole = next.y - p.y;
            const bool crosses = whole > 0 ? down > 0 && down < whole : down < 0 && down > whole;
            if (!crosses) continue;
            const float part = static_cast<float>(down) / static_cast<float>(whole);
            x += static_cast<int32_t>(std::rint(static_cast<float>(next.x - p.x) * part));
        }
        left = std::min(left, x);
        right = std::max(right, x);
    }
    const int32_t width = right - left;
    const float shape =
        static_cast<float>(band.height) / static_cast<float>(std::max(box.width, 1));
    return {left, band.top, width, static_cast<int32_t>(static_cast<float>(width) * shape)};
}

void RingLines(const cv::Rect& ring, bool open, const cv::Size& size, const CurveLineSink& sink) {
    const int32_t right = ring.x + ring.width;
    const int32_t middleX = ring.x + ring.width / 2;
    const int32_t middleY = ring.y + ring.height / 2;
    const int32_t bottom = ring.y + ring.height;
    const std::array<cv::Point, 5> pixels = {
        cv::Point(open ? ring.x + 3 * ring.width / 4 : middleX, ring.y),
        {right, middleY},
        {middleX, bottom},
        {ring.x, middleY},
        {ring.x + ring.width / 4, ring.y}};
    const std::size_t count = open ? 5 : 4;
    const auto place = [&](std::size_t i) {
        return ToDeviceSpace(cv::Point2f(pixels[i % count]), size);
    };
    const auto sixth = [&](std::size_t i) {
        const cv::Point2f way = place(i + 1) - place(i);
        return std::hypot(way.x, way.y) / 6.0F;
    };
    float total = 0.0F;
    for (std::size_t k = 0; k < kRingLines; ++k) total += sixth(k);
    if (!(total > 0.0F)) return;
    float way = 0.0F;
    for (std::size_t k = 0; k < kRingLines; ++k) {
        const cv::Point2f from = place(k);
        const cv::Point2f to = place(k + 1);
        const cv::Point2f before = Direction(place(k + count - 1), from);
        const cv::Point2f along = Direction(from, to);
        const cv::Point2f after = Direction(to, place(k + 2));
        const float length = sixth(k);
        sink({from, to, from + (before + along) * length, to - (along + after) * length,
              way / total, (way + length) / total});
        way += length;
    }
}

}  // namespace kelmo
