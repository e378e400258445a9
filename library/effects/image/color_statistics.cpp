// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/image/color_statistics.h"

#include <cmath>
#include <opencv2/imgproc.hpp>

namespace kelmo {
namespace {

constexpr int kStripes = 8;
/// The least cone response that is told from black.
constexpr double kFloor = 0.03;
/// From a byte to 0..1, with the digits that reference statistics are made with (1 / 255 is
/// 0.0039216).
constexpr float kByteScale = 0.003922F;

/// Rows: cone responses L, M, S. Columns: B, G, R.
constexpr float kBgrToLms[3][3] = {
    {0.0402F, 0.5783F, 0.3811F},
    {0.0782F, 0.7244F, 0.1967F},
    {0.8444F, 0.1288F, 0.0241F},
};

struct Scales {
    float logScale = static_cast<float>(1.0 / std::log(10.0));
    float l = static_cast<float>(1.0 / std::sqrt(3.0));
    float alpha = static_cast<float>(1.0 / std::sqrt(6.0));
    float beta = static_cast<float>(1.0 / std::sqrt(2.0));
};

const Scales& ScaleFactors() {
    static const Scales scales;
    return scales;
}

float LogResponse(const float (&weights)[3], float b, float g, float r, float logScale) {
    float response = (weights[0] * b + weights[1] * g + weights[2] * r) * kByteScale;
    if (response < kFloor) response = static_cast<float>(kFloor);
    return std::log(response) * logScale;
}

void MeasureRow(const uint8_t* in, float* out, int columns) {
    const Scales& scales = ScaleFactors();
    for (int x = 0; x < columns; ++x, in += 4, out += 3) {
        const float b = in[0];
        const float g = in[1];
        const float r = in[2];
        const float l = LogResponse(kBgrToLms[0], b, g, r, scales.logScale);
        const float m = LogResponse(kBgrToLms[1], b, g, r, scales.logScale);
        const float s = LogResponse(kBgrToLms[2], b, g, r, scales.logScale);
        out[0] = (l + m + s) * scales.l;
        out[1] = (l + m - 2.0F * s) * scales.alpha;
        out[2] = (l - m) * scales.beta;
    }
}

/// Brings stripes of a picture into the logarithmic space; each call writes its own rows.
class parallelMeanStddevInvoker : public cv::ParallelLoopBody {
public:
    parallelMeanStddevInvoker(const cv::Mat& source, cv::Mat& target)
        : src(&source),
          dst(&target),
          stripes(kStripes),
          rows(source.rows),
          cols(source.cols),
          evenSplit(source.rows % kStripes == 0) {}

    void operator()(const cv::Range& range) const override {
        const int rowsPerStripe = rows / stripes;
        for (int stripe = range.start; stripe < range.end; ++stripe) {
            const int begin = stripe * rowsPerStripe;
            const bool takesRest = !evenSplit && stripe == stripes - 1;
            const int end = takesRest ? rows : begin + rowsPerStripe;
            for (int y = begin; y < end; ++y) MeasureRow(src->ptr(y), dst->ptr<float>(y), cols);
        }
    }

private:
    const cv::Mat* src;
    cv::Mat* dst;
    int stripes;
    int rows;
    int cols;
    bool evenSplit;
};

ColorStatistics MeanAndDeviation(const cv::Mat& lab) {
    cv::Scalar mean;
    cv::Scalar deviation;
    cv::meanStdDev(lab, mean, deviation);
    return {{mean[0], mean[1], mean[2]}, {deviation[0], deviation[1], deviation[2]}};
}

}  // namespace

ColorStatistics MeasureColorSerial(const cv::Mat& bgra) {
    if (bgra.empty()) return {};
    const Scales& scales = ScaleFactors();
    const cv::Mat bgrToLms(3, 3, CV_32F, const_cast<float*>(&kBgrToLms[0][0]));
    const cv::Matx33f lmsToLab(scales.l, scales.l, scales.l, scales.alpha, scales.alpha,
                               -2.0F * scales.alpha, scales.beta, -scales.beta, 0.0F);
    cv::Mat bgr;
    cv::cvtColor(bgra, bgr, cv::COLOR_BGRA2BGR);
    cv::Mat lms;
    bgr.convertTo(lms, CV_32FC3, 1.0 / 255.0);
    cv::transform(lms, lms, bgrToLms);
    cv::max(lms, cv::Scalar::all(kFloor), lms);
    cv::log(lms, lms);
    lms.convertTo(lms, -1, 1.0 / std::log(10.0));
    cv::transform(lms, lms, lmsToLab);
    return MeanAndDeviation(lms);
}

ColorStatistics MeasureColorParallel(const cv::Mat& bgra, cv::Mat& scratch) {
    if (bgra.empty()) return {};
    scratch.create(bgra.rows, bgra.cols, CV_32FC3);
    cv::parallel_for_(cv::Range(0, kStripes), parallelMeanStddevInvoker(bgra, scratch),
                      cv::getNumThreads());
    return MeanAndDeviation(scratch);
}

ColorStatistics MeasureColor(const cv::Mat& bgra, cv::Mat& scratch) {
    const int64_t pixels = static_cast<int64_t>(bgra.rows) * bgra.cols;
    return pixels <= kSerialMeasureLimit ? MeasureColorSerial(bgra)
                                         : MeasureColorParallel(bgra, scratch);
}

}  // namespace kelmo
