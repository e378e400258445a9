// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/human_memory/past_pictures.h"

#include <algorithm>
#include <opencv2/imgproc.hpp>

namespace kelmo {
namespace {

cv::Size Reduced(const cv::Size& size, int longestShortSide) {
    const int side = std::min(size.width, size.height);
    if (side <= longestShortSide) return size;
    const double scale = static_cast<double>(longestShortSide) / side;
    return {cvRound(size.width * scale), cvRound(size.height * scale)};
}

}  // namespace

PastPictures::PastPictures() : blank(cv::Mat::zeros(4, 4, CV_8UC4)) {
    Restart(1);
}

void PastPictures::Restart(std::size_t count) {
    ring.assign(std::max<std::size_t>(count, 1), blank);
    front = 0;
}

void PastPictures::Push(const cv::Mat& picture, Content content) {
    cv::Mat& place = ring[front];
    // All blanks are one picture.
    if (place.data == blank.data) place.release();
    if (content == Content::kMask) {
        const cv::Size size = Reduced(picture.size(), kMaskSide);
        cv::extractChannel(picture, size == picture.size() ? place : small, 0);
        if (size != picture.size()) cv::resize(small, place, size, 0.0, 0.0, cv::INTER_AREA);
    } else {
        const cv::Size size = Reduced(picture.size(), kCutoutSide);
        if (size == picture.size()) {
            picture.copyTo(place);
        } else {
            cv::resize(picture, place, size, 0.0, 0.0, cv::INTER_AREA);
        }
    }
    front = (front + 1) % ring.size();
}

const cv::Mat& PastPictures::At(std::size_t age) const {
    return ring[(front + age) % ring.size()];
}

}  // namespace kelmo
