// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/scene/particles/picture_particles.h"

#include <algorithm>
#include <cmath>
#include <opencv2/imgproc.hpp>

#include "effects/scene/particles/scatter.h"
#include "framework/shared/quad_corners.h"
#include "framework/shared/working_size.h"

namespace kelmo {
namespace {

constexpr int kCell = 10;
/// So many draws leave hardly a pixel of a cell out.
constexpr int32_t kMostDraws = 1000;
constexpr double kDark = 3.0;
constexpr double kSame = 1e-6;
constexpr float kByte = 0.003922F;

/// Straight colour of a premultiplied one.
uint8_t Unmultiply(uint8_t value, uint8_t alpha) {
    if (alpha == 0) return 0;
    return static_cast<uint8_t>(std::min(value * 255 / alpha, 255));
}

}  // namespace

void PictureParticles::ChooseSamples(const cv::Size& size) {
    sampleMask = cv::Mat::zeros(size, CV_8U);
    const int draws = std::clamp(lastAmount, 0, kMostDraws);
    uint64_t cell = 0;
    for (int y = 0; y < size.height; y += kCell) {
        for (int x = 0; x < size.width; x += kCell) {
            Chance chance(cell++);
            for (int i = 0; i < draws; ++i) {
                const int a = chance.Below(kCell), b = chance.Below(kCell);
                sampleMask.at<uint8_t>(std::min(y + b, size.height - 1),
                                       std::min(x + a, size.width - 1)) = 255;
            }
        }
    }
}

bool PictureParticles::Follow(const cv::Mat& picture, int32_t amount, int32_t frameWidth,
                              int32_t frameHeight) {
    const WorkingSize working = WorkingSize::For(frameWidth, frameHeight);
    const cv::Size size(working.width, working.height);
    if (picture.type() == CV_8UC4 && !picture.empty()) {
        cv::resize(picture, small, size, 0, 0, cv::INTER_LINEAR);
    } else {
        small = cv::Mat::zeros(size, CV_8UC4);
    }
    cv::cvtColor(small, gray, cv::COLOR_BGR2GRAY);
    const bool resized = frameWidth != lastWidth || frameHeight != lastHeight;
    const bool chooses = amount != lastAmount || sampleMask.size() != size;
    if (chooses) {
        lastAmount = amount;
        ChooseSamples(size);
    }
    cv::Scalar mean, deviation;
    cv::meanStdDev(gray, mean, deviation);
    const bool changed =
        std::abs(mean[0] - lastMean) > kSame && std::abs(deviation[0] - lastStdDev) > kSame;
    if (!changed && !chooses && !resized) return false;
    lastMean = mean[0];
    lastStdDev = deviation[0];
    lastWidth = frameWidth;
    lastHeight = frameHeight;
    cv::threshold(gray, bright, kDark, 255, cv::THRESH_BINARY);
    Build();
    return true;
}

void PictureParticles::Build() {
    positions.clear();
    corners.clear();
    colors.clear();
    const cv::Vec2f scale(2.0F / static_cast<float>(small.cols),
                          2.0F / static_cast<float>(small.rows));
    for (int y = 0; y < small.rows; ++y) {
        const auto* const chosen = sampleMask.ptr<uint8_t>(y);
        const auto* const shown = bright.ptr<uint8_t>(y);
        for (int x = 0; x < small.cols; ++x) {
            if (chosen[x] == 0 || shown[x] == 0) continue;
            Put({static_cast<float>(x) * scale[0] - 1.0F, static_cast<float>(y) * scale[1] - 1.0F},
                small.at<cv::Vec4b>(y, x));
        }
    }
}

void PictureParticles::Put(const cv::Vec2f& place, const cv::Vec4b& pixel) {
    const float color[4] = {kByte * static_cast<float>(Unmultiply(pixel[0], pixel[3])),
                            kByte * static_cast<float>(Unmultiply(pixel[1], pixel[3])),
                            kByte * static_cast<float>(Unmultiply(pixel[2], pixel[3])), 1.0F};
    for (const auto& corner : kQuadCorners) {
        positions.insert(positions.end(), place.val, place.val + 2);
        corners.insert(corners.end(), corner, corner + 2);
        colors.insert(colors.end(), color, color + 4);
    }
}

}  // namespace kelmo
