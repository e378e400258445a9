// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/beam/lightning/bright_ends.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <opencv2/imgproc.hpp>

namespace kelmo {
namespace {

constexpr double kBright = 20.0;
constexpr double kMarked = 250.0;
constexpr int kBorder = 5;
constexpr std::size_t kLeastPoints = 3;

/// The place nearest to `target`, kept as places come by.
struct Nearest {
    cv::Point target;
    cv::Point place;
    int64_t distance = std::numeric_limits<int64_t>::max();

    void Consider(const cv::Point& point) {
        const int64_t x = point.x - target.x;
        const int64_t y = point.y - target.y;
        if (x * x + y * y >= distance) return;
        distance = x * x + y * y;
        place = point;
    }
    bool Found() const { return distance != std::numeric_limits<int64_t>::max(); }
};

cv::Point2f DevicePlace(const cv::Point& pixel, const cv::Size& size) {
    return {(static_cast<float>(pixel.x) / static_cast<float>(size.width) - 0.5F) * 2.0F,
            (static_cast<float>(pixel.y) / static_cast<float>(size.height) - 0.5F) * -2.0F};
}

}  // namespace

bool BrightEndFinder::FindAnchors(const cv::Mat& picture, BrightEnds& ends, cv::Mat& mask) {
    if (picture.empty() || picture.type() != CV_8UC4) return false;
    cv::cvtColor(picture, gray, cv::COLOR_RGBA2GRAY);
    cv::threshold(gray, gray, kBright, kMarked, cv::THRESH_BINARY);
    cv::cvtColor(gray, mask, cv::COLOR_GRAY2RGBA);
    const cv::Rect inside(kBorder, kBorder, gray.cols - 2 * kBorder, gray.rows - 2 * kBorder);
    if (inside.width < 1 || inside.height < 1) return false;
    framed.create(gray.size(), gray.type());
    framed.setTo(0);
    gray(inside).copyTo(framed(inside));
    cv::findContours(framed, contours, cv::RETR_LIST, cv::CHAIN_APPROX_SIMPLE);
    cv::Rect box;
    for (const auto& contour : contours) box |= cv::boundingRect(contour);
    Nearest topLeft{box.tl(), {}};
    Nearest bottomRight{box.br(), {}};
    // The largest come first: among places equally near, theirs is taken.
    std::stable_sort(contours.begin(), contours.end(),
                     [](const auto& a, const auto& b) { return a.size() > b.size(); });
    for (const auto& contour : contours) {
        if (contour.size() < kLeastPoints) continue;
        for (const cv::Point& point : contour) {
            topLeft.Consider(point);
            bottomRight.Consider(point);
        }
    }
    if (!topLeft.Found()) return false;
    ends = {DevicePlace(topLeft.place, gray.size()), DevicePlace(bottomRight.place, gray.size())};
    return true;
}

}  // namespace kelmo
