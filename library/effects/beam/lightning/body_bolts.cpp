// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/beam/lightning/body_bolts.h"

#include <algorithm>

#include "effects/beam/lightning/random_fraction.h"

namespace kelmo {
namespace {

constexpr int32_t kTicksOfAnAnchor = 3;
constexpr int kMostTries = 100;
constexpr int32_t kPlaces = 1000;
constexpr int32_t kOffsets = 50;
constexpr float kReach = 0.45F;
constexpr float kTremble = 0.01F;
constexpr float kDisplace = 0.22F;
constexpr float kDetail = 0.02F;
/// Of the working picture.
constexpr float kAspect = 1.7792208F;

bool Covers(const cv::Mat& mask, const cv::Point2f& at) {
    const int column = static_cast<int>((at.x + 1.0F) * static_cast<float>(mask.cols) / 2.0F);
    const int row = static_cast<int>((1.0F - at.y) * static_cast<float>(mask.rows) / 2.0F);
    return column >= 0 && row >= 0 && column < mask.cols && row < mask.rows &&
           mask.at<uint8_t>(row, column) != 0;
}

cv::Point2f Offset(float reachX, float reachY) {
    const float x = RandomOffset(kOffsets) * reachX;
    const float y = RandomOffset(kOffsets) * reachY;
    return {x, y};
}

}  // namespace

BodyFlash BodyFlash::At(float ticks, int32_t interval, int32_t light) {
    const int32_t tick = static_cast<int32_t>(ticks) % std::max(interval, 1);
    return {tick, tick <= light};
}

cv::Point2f BodyBolts::PlaceOnBody(const cv::Mat& mask, const cv::Rect& box) {
    const auto columns = static_cast<float>(mask.cols);
    const auto rows = static_cast<float>(mask.rows);
    const float left = (static_cast<float>(box.x) / columns - 0.5F) * 2.0F;
    const float top = (static_cast<float>(box.y) / rows - 0.5F) * -2.0F;
    const float across = static_cast<float>(box.width) / columns * 2.0F;
    const float down = static_cast<float>(box.height) / rows * -2.0F;
    cv::Point2f place;
    for (int tries = 0; tries < kMostTries; ++tries) {
        place.x = left + RandomFraction(kPlaces) * across;
        place.y = top + RandomFraction(kPlaces) * down;
        if (Covers(mask, place)) break;
    }
    return place;
}

void BodyBolts::Draw(int32_t tick, const cv::Mat& mask, const cv::Rect& box,
                     const BoltLineSink& sink) {
    const cv::Point2f aspect =
        mask.cols > mask.rows ? cv::Point2f(1.0F, kAspect) : cv::Point2f(kAspect, 1.0F);
    const cv::Point2f tremble = aspect * kTremble;
    for (std::size_t bolt = 0; bolt < kBolts; ++bolt) {
        cv::Point2f& start = startPoints[bolt];
        if (tick % kTicksOfAnAnchor == 0) {
            start = PlaceOnBody(mask, box);
            endPoints[bolt] = start + Offset(kReach * aspect.x, kReach * aspect.x);
        }
        start += Offset(tremble.x, tremble.y);
        const cv::Point2f end = endPoints[bolt] + Offset(tremble.x, tremble.y);
        FractalBolt({end, start}, {kDisplace, kDetail, 1.0F}, nullptr, sink);
    }
}

}  // namespace kelmo
