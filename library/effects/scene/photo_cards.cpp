// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/scene/photo_cards.h"

#include <algorithm>
#include <cmath>
#include <opencv2/core/utility.hpp>

#include "effects/scene/particles/scatter.h"
#include "framework/shared/quad_corners.h"

namespace kelmo {
namespace {

constexpr float kBackdropDepth = -10.0F;

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
    Chance chance(card);
    ScatteredPlace place;
    float own = 0.0F, dx = 0.5F, dy = 0.5F;
    if (card > 0) {
        place = ScatterOver(picture, chance);
        own = chance.Next();
        dx = chance.Next();
        dy = chance.Next();
    }
    for (std::size_t k = 0; k < kQuadVertices; ++k) {
        const std::size_t vertex = card * kQuadVertices + k;
        const auto& [cornerX, cornerY] = kQuadCorners[k];
        float* const position = &positions[4 * vertex];
        position[0] = card > 0 ? 2.0F * place.u - 1.0F : cornerX;
        position[1] = card > 0 ? 2.0F * place.v - 1.0F : cornerY;
        position[2] = card > 0 ? 2.0F * place.z - 1.0F : kBackdropDepth;
        position[3] = card > 0 ? own : 1.0F;
        directions[2 * vertex] = 2.0F * dx - 1.0F;
        directions[2 * vertex + 1] = 2.0F * dy - 1.0F;
        corners[2 * vertex] = cornerX;
        corners[2 * vertex + 1] = cornerY;
    }
}

void PhotoCards::Build(const cv::Size& grid, const cv::Mat& picture) {
    const std::size_t cards = static_cast<std::size_t>(std::max(grid.area(), 0)) + 1;
    positions.resize(cards * kQuadVertices * 4);
    directions.resize(cards * kQuadVertices * 2);
    corners.resize(cards * kQuadVertices * 2);
    const auto put = [&](const cv::Range& range) {
        for (int card = range.start; card < range.end; ++card) {
            PutCard(static_cast<std::size_t>(card), picture);
        }
    };
    cv::parallel_for_(cv::Range(0, static_cast<int>(cards)), put, cv::getNumThreads());
}

}  // namespace kelmo
