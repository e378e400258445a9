// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/scene/photo_cards.h"

#include <algorithm>
#include <cmath>
#include <opencv2/core/utility.hpp>

namespace kelmo {
namespace {

constexpr std::size_t kCorners = 6;
constexpr float kCorner[kCorners][2] = {{-1, 1}, {1, 1}, {1, -1}, {-1, 1}, {1, -1}, {-1, -1}};
constexpr float kBackdropDepth = -10.0F;
constexpr int kTries = 50;

/// Numbers in steps of a thousandth, 0..0.999, each card with its own row of them: SplitMix64
/// (Steele, Lea and Flood, 2014).
class CardChance {
public:
    explicit CardChance(std::size_t card) : state(card * 0x9E3779B97F4A7C15U) {}
    float Next() {
        state += 0x9E3779B97F4A7C15U;
        uint64_t mixed = state;
        mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9U;
        mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EBU;
        return static_cast<float>((mixed ^ (mixed >> 31)) % 1000) / 1000.0F;
    }

private:
    uint64_t state;
};

bool IsBlack(const cv::Mat& picture, float u, float v) {
    if (picture.empty()) return true;
    const auto column = static_cast<int>(static_cast<float>(picture.cols) * u);
    const auto row = static_cast<int>(static_cast<float>(picture.rows) * v);
    const auto& pixel = picture.at<cv::Vec4b>(row, column);
    return pixel[0] == 0 && pixel[1] == 0 && pixel[2] == 0;
}

}  // namespace

cv::Size PhotoCards::GridFor(int32_t count, int32_t frameWidth, int32_t frameHeight) {
    if (count <= 0 || frameWidth <= 0 || frameHeight <= 0) return {};
    const double longer = std::max(frameWidth, frameHeight);
    const double shorter = std::min(frameWidth, frameHeight);
    const double most = std::floor(std::sqrt(kMostCards * longer / shorter));
    const double along = std::min(static_cast<double>(count), std::min<double>(most, kMostCards));
    const auto across = static_cast<int32_t>(along * shorter / longer);
    const auto length = static_cast<int32_t>(along);
    return frameWidth <= frameHeight ? cv::Size(across, length) : cv::Size(length, across);
}

void PhotoCards::PutCard(std::size_t card, const cv::Mat& picture) {
    CardChance chance(card);
    float u = 0.0F, v = 0.0F, z = 0.0F, own = 0.0F, dx = 0.5F, dy = 0.5F;
    if (card > 0) {
        for (int i = 0; i < kTries; ++i) {
            u = chance.Next();
            v = chance.Next();
            z = chance.Next();
            if (!IsBlack(picture, u, v)) break;
        }
        own = chance.Next();
        dx = chance.Next();
        dy = chance.Next();
    }
    for (std::size_t k = 0; k < kCorners; ++k) {
        const std::size_t vertex = card * kCorners + k;
        const auto& [cornerX, cornerY] = kCorner[k];
        float* const position = &positions[4 * vertex];
        position[0] = card > 0 ? 2.0F * u - 1.0F : cornerX;
        position[1] = card > 0 ? 2.0F * v - 1.0F : cornerY;
        position[2] = card > 0 ? 2.0F * z - 1.0F : kBackdropDepth;
        position[3] = card > 0 ? own : 1.0F;
        directions[2 * vertex] = 2.0F * dx - 1.0F;
        directions[2 * vertex + 1] = 2.0F * dy - 1.0F;
        corners[2 * vertex] = cornerX;
        corners[2 * vertex + 1] = cornerY;
    }
}

void PhotoCards::Build(const cv::Size& grid, const cv::Mat& picture) {
    const std::size_t cards = static_cast<std::size_t>(std::max(grid.area(), 0)) + 1;
    positions.resize(cards * kCorners * 4);
    directions.resize(cards * kCorners * 2);
    corners.resize(cards * kCorners * 2);
    const auto put = [&](const cv::Range& range) {
        for (int card = range.start; card < range.end; ++card) {
            PutCard(static_cast<std::size_t>(card), picture);
        }
    };
    cv::parallel_for_(cv::Range(0, static_cast<int>(cards)), put, cv::getNumThreads());
}

}  // namespace kelmo
