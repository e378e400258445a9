// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <cmath>

#include "effects/human/parallel_mask_blend_invoker.h"

namespace kelmo {
namespace {

constexpr int kStripes = 8;
const cv::Scalar kUntouched = cv::Scalar::all(77);

cv::Mat Plain(const cv::Mat& src, const cv::Mat& mask) {
    cv::Mat blended(src.size(), CV_8UC4);
    for (int y = 0; y < src.rows; ++y) {
        for (int x = 0; x < src.cols; ++x) {
            for (int channel = 0; channel < 4; ++channel) {
                blended.at<cv::Vec4b>(y, x)[channel] = static_cast<uint8_t>(std::rint(
                    src.at<cv::Vec4b>(y, x)[channel] * mask.at<cv::Vec4b>(y, x)[0] / 255.0));
            }
        }
    }
    return blended;
}

/// Runs of outside, inside and edge of random lengths; the other three bytes say nothing.
cv::Mat RandomMask(cv::Size size, cv::RNG& random) {
    cv::Mat mask(size, CV_8UC4);
    random.fill(mask, cv::RNG::UNIFORM, 0, 256);
    for (int y = 0; y < size.height; ++y) {
        for (int x = 0; x < size.width;) {
            const int kind = random.uniform(0, 3);
            for (int end = x + random.uniform(1, 40); x < std::min(end, size.width); ++x) {
                if (kind < 2) mask.at<cv::Vec4b>(y, x)[0] = kind == 0 ? 0 : 255;
            }
            ++x;
        }
    }
    return mask;
}

double Difference(const cv::Mat& a, const cv::Mat& b) {
    return cv::norm(a, b, cv::NORM_INF);
}

TEST(MaskBlend, IsTheRoundedProductForEveryByteAndCoverage) {
    // Rows of any coverage by columns of any byte: by vectors, and by single pixels.
    for (const int columns : {64, 8}) {
        cv::Mat src(256, columns, CV_8UC4);
        cv::Mat mask(256, columns, CV_8UC4);
        for (int part = 0; part < 64 / columns; ++part) {
            for (int y = 0; y < 256; ++y) {
                for (int i = 0; i < columns * 4; ++i) {
                    src.ptr(y)[i] = static_cast<uint8_t>(part * columns * 4 + i);
                }
                mask.row(y).setTo(cv::Scalar::all(y));
            }
            cv::Mat dst;
            BlendWithMask(dst, src, mask);
            ASSERT_EQ(Difference(dst, Plain(src, mask)), 0) << columns << " " << part;
        }
    }
}

TEST(MaskBlend, StripesCoverEachRowOnce) {
    const struct {
        int rows;
        int ofEach;
        int ofLast;
    } cases[] = {{4, 0, 4}, {10, 1, 3}, {308, 38, 42}, {8, 1, 1}};
    cv::RNG random(5);
    for (const auto& c : cases) {
        for (const int columns : {1, 15, 16, 53}) {
            SCOPED_TRACE(std::to_string(columns) + "x" + std::to_string(c.rows));
            cv::Mat src(c.rows, columns, CV_8UC4);
            random.fill(src, cv::RNG::UNIFORM, 0, 256);
            const cv::Mat mask = RandomMask(src.size(), random);
            const cv::Mat expected = Plain(src, mask);
            int first = 0;
            for (int stripe = 0; stripe < kStripes; ++stripe) {
                const int rows = stripe == kStripes - 1 ? c.ofLast : c.ofEach;
                cv::Mat dst(src.size(), CV_8UC4, kUntouched);
                cv::Mat own = dst.clone();
                const parallelMaskBlendInvoker body(&dst, &src, &mask, kStripes);
                body(cv::Range(stripe, stripe + 1));
                if (rows > 0)
                    expected.rowRange(first, first + rows)
                        .copyTo(own.rowRange(first, first + rows));
                EXPECT_EQ(Difference(dst, own), 0) << "stripe " << stripe;
                first += rows;
            }
            EXPECT_EQ(first, c.rows);
        }
    }
}

TEST(MaskBlend, ReadsAndWritesPartsOfLargerPictures) {
    cv::RNG random(9);
    cv::Mat whole(40, 70, CV_8UC4);
    random.fill(whole, cv::RNG::UNIFORM, 0, 256);
    const cv::Rect part(3, 5, 41, 20);
    const cv::Mat mask = RandomMask({80, 30}, random)(cv::Rect(7, 2, 41, 20));
    cv::Mat canvas(40, 70, CV_8UC4, kUntouched);
    cv::Mat expected = canvas.clone();
    const cv::Mat src = whole(part);
    Plain(src, mask).copyTo(expected(part));
    cv::Mat dst = canvas(part);
    BlendWithMask(dst, src, mask);
    EXPECT_EQ(Difference(canvas, expected), 0);
}

}  // namespace
}  // namespace kelmo
