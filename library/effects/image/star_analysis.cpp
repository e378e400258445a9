// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/image/star_analysis.h"

#include <algorithm>
#include <cmath>
#include <opencv2/imgproc.hpp>
#include <vector>

namespace kelmo {
namespace {

/// Below this level nothing is a highlight.
constexpr int32_t kDarkest = 10;
/// A spot that covers more of the frame is a sky or a window.
constexpr double kLargestPart = 0.05;
constexpr int kGrow = 9;

}  // namespace

HighlightLevels MeasureHighlights(const cv::Mat& gray) {
    // Four tables in turn: neighbours are often equal, and a count must not wait for the one
    // before.
    constexpr int kTables = 4;
    std::array<std::array<uint32_t, 256>, kTables> tables{};
    for (int y = 0; y < gray.rows; ++y) {
        const uint8_t* const row = gray.ptr(y);
        int x = 0;
        for (; x + kTables <= gray.cols; x += kTables) {
            for (int k = 0; k < kTables; ++k) ++tables[k][row[x + k]];
        }
        for (; x < gray.cols; ++x) ++tables[0][row[x]];
    }
    const float pixels = static_cast<float>(gray.cols) * static_cast<float>(gray.rows);
    const auto limit = static_cast<int64_t>(pixels * 50.0F * 0.00001F);
    HighlightLevels levels;
    int64_t sum = 0;
    for (int32_t level = 255; level >= 0; --level) {
        for (const auto& table : tables) sum += table[level];
        if (sum > 0 && levels.brightest < 0) levels.brightest = level;
        if (sum > limit) {
            levels.threshold = level;
            break;
        }
    }
    return levels;
}

bool StarAnalysis::Run(const cv::Mat& bgra, float density) {
    if (bgra.empty()) return false;
    cv::cvtColor(bgra, gray, cv::COLOR_BGRA2GRAY);
    const HighlightLevels levels = MeasureHighlights(gray);
    if (levels.threshold < kDarkest) return false;
    cv::threshold(gray, mask, levels.threshold - 1, 255.0, cv::THRESH_BINARY);
    cv::dilate(mask, mask, cv::getStructuringElement(cv::MORPH_RECT, cv::Size(kGrow, kGrow)),
               cv::Point(-1, -1), 1, cv::BORDER_CONSTANT, cv::morphologyDefaultBorderValue());
    try {
        starCount = CollectSpots(levels);
    } catch (const cv::Exception&) {
        return false;
    }
    const float longer = static_cast<float>(std::max(gray.cols, gray.rows));
    DropNeighbours(longer / 960.0F * 50.0F * (130.0F - density) * 0.02F);
    for (int32_t i = 0; i < starCount; ++i) {
        positions[i][0] /= static_cast<float>(gray.cols);
        positions[i][1] /= static_cast<float>(gray.rows);
    }
    return true;
}

int32_t StarAnalysis::CollectSpots(const HighlightLevels& levels) {
    std::vector<std::vector<cv::Point>> contours;
    cv::findContours(mask, contours, cv::RETR_EXTERNAL, cv::CHAIN_APPROX_SIMPLE);
    const auto looked = std::min<std::size_t>(contours.size(), kMostStars);
    const double frame = static_cast<double>(gray.cols) * gray.rows;
    int32_t found = 0;
    for (std::size_t i = 0; i < looked; ++i) {
        const cv::RotatedRect spot = cv::minAreaRect(contours[i]);
        if (static_cast<double>(spot.size.width) * spot.size.height / frame > kLargestPart)
            continue;
        const int row = std::clamp(static_cast<int>(spot.center.y + 0.5F), 0, gray.rows - 1);
        const int column = std::clamp(static_cast<int>(spot.center.x + 0.5F), 0, gray.cols - 1);
        const int32_t level = gray.at<uint8_t>(row, column);
        auto& star = positions[found++];
        star[0] = spot.center.x;
        star[1] = spot.center.y;
        // A saturated centre counts as 0, as does one no brighter than the threshold.
        const bool graded = level != 255 && level > levels.threshold;
        const auto range = static_cast<float>(levels.brightest - levels.threshold);
        const auto above = static_cast<float>(level - levels.threshold);
        star[2] = graded ? std::min(1.0F, above / range) : 0.0F;
    }
    return found;
}

void StarAnalysis::DropNeighbours(float radius) {
    std::array<bool, kMostStars> marked{};
    for (int32_t i = 0; i < starCount; ++i) {
        for (int32_t j = i + 1; j < starCount; ++j) {
            const float dx = positions[i][0] - positions[j][0];
            const float dy = positions[i][1] - positions[j][1];
            if (dx * dx + dy * dy < radius * radius) marked[j] = true;
        }
    }
    int32_t kept = 0;
    for (int32_t i = 0; i < starCount; ++i) {
        if (marked[i]) continue;
        // The fourth word belongs to the place, not to the star.
        std::copy_n(positions[i].begin(), 3, positions[kept++].begin());
    }
    starCount = kept;
}

}  // namespace kelmo
