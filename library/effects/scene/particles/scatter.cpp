// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/scene/particles/scatter.h"

namespace kelmo {
namespace {

constexpr int kTries = 50;

bool IsBlack(const cv::Mat& picture, const ScatteredPlace& place) {
    if (picture.empty()) return true;
    const auto column = static_cast<int>(static_cast<float>(picture.cols) * place.u);
    const auto row = static_cast<int>(static_cast<float>(picture.rows) * place.v);
    const auto& pixel = picture.at<cv::Vec4b>(row, column);
    return pixel[0] == 0 && pixel[1] == 0 && pixel[2] == 0;
}

}  // namespace

ScatteredPlace ScatterOver(const cv::Mat& picture, Chance& chance) {
    ScatteredPlace place;
    for (int i = 0; i < kTries; ++i) {
        place.u = chance.Next();
        place.v = chance.Next();
        place.z = chance.Next();
        if (!IsBlack(picture, place)) break;
    }
    return place;
}

}  // namespace kelmo
