// SPDX-License-Identifier: GPL-3.0-or-later
// Cutting people out of a 1080p frame, beside cv::multiply of the same pictures in the same stripes
// on the same threads, and beside the multiply table read byte by byte. Each counter is that one's
// time over ours, measured in turns in one run: above 1 we are faster.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstring>
#include <opencv2/imgproc.hpp>

#include "effects/human/parallel_mask_blend_invoker.h"
#include "framework/shared/multiply_table.h"

namespace kelmo {
namespace {

constexpr int kStripes = 8;

enum Kind { kPerson, kSoft, kNobody };

/// One channel in four, as masks arrive.
cv::Mat MaskOf(Kind kind, cv::Size size) {
    cv::Mat grey(size, CV_8UC1, cv::Scalar(0));
    if (kind == kPerson) {
        cv::ellipse(grey, {960, 330}, {150, 200}, 0, 0, 360, 255, cv::FILLED);
        cv::ellipse(grey, {960, 1080}, {420, 560}, 0, 0, 360, 255, cv::FILLED);
        cv::GaussianBlur(grey, grey, {0, 0}, 3.0);
    } else if (kind == kSoft) {
        cv::RNG random(3);
        random.fill(grey, cv::RNG::UNIFORM, 1, 255);
    }
    cv::Mat mask;
    cv::merge(std::vector<cv::Mat>(4, grey), mask);
    return mask;
}

void ByTable(cv::Mat& dst, const cv::Mat& src, const cv::Mat& mask) {
    for (int y = 0; y < dst.rows; ++y) {
        uint8_t* to = dst.ptr(y);
        const uint8_t* from = src.ptr(y);
        const uint8_t* by = mask.ptr(y);
        for (int i = 0; i < dst.cols * 4; i += 4) {
            const uint8_t coverage = by[i];
            if (coverage == 0) {
                std::memset(to + i, 0, 4);
            } else if (coverage == 255) {
                std::memcpy(to + i, from + i, 4);
            } else {
                for (int k = i; k < i + 4; ++k) to[k] = multiplyTable[from[k] * 256 + coverage];
            }
        }
    }
}

template <typename Body>
void InStripes(cv::Mat& dst, const cv::Mat& src, const cv::Mat& mask, const Body& body) {
    cv::parallel_for_(cv::Range(0, kStripes), [&](const cv::Range& stripes) {
        const int rows = dst.rows / kStripes;
        const cv::Range part(stripes.start * rows, stripes.end * rows);
        cv::Mat to = dst.rowRange(part);
        body(to, src.rowRange(part), mask.rowRange(part));
    });
}

template <typename Work>
double Seconds(const Work& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

void Blend(benchmark::State& state, Kind kind) {
    cv::setNumThreads(static_cast<int>(state.range(0)));
    const cv::Size size(1920, 1080);
    cv::Mat src(size, CV_8UC4);
    cv::RNG(7).fill(src, cv::RNG::UNIFORM, 0, 256);
    const cv::Mat mask = MaskOf(kind, size);
    cv::Mat ours;
    cv::Mat multiplied(size, CV_8UC4);
    cv::Mat looked(size, CV_8UC4);
    double own = 1e9;
    double multiply = 1e9;
    double table = 1e9;
    for (auto _ : state) {
        const double time = Seconds([&] { BlendWithMask(ours, src, mask); });
        own = std::min(own, time);
        state.SetIterationTime(time);
        multiply = std::min(multiply, Seconds([&] {
                                InStripes(multiplied, src, mask,
                                          [](cv::Mat& to, const cv::Mat& a, const cv::Mat& b) {
                                              cv::multiply(a, b, to, 1.0 / 255.0);
                                          });
                            }));
        table = std::min(table, Seconds([&] { InStripes(looked, src, mask, ByTable); }));
    }
    if (cv::norm(ours, looked, cv::NORM_INF) != 0) state.SkipWithError("not what the table says");
    state.counters["times_multiply"] = multiply / own;
    state.counters["times_table"] = table / own;
}

BENCHMARK_CAPTURE(Blend, person, kPerson)->Arg(1)->Arg(2)->UseManualTime();
BENCHMARK_CAPTURE(Blend, soft_everywhere, kSoft)->Arg(1)->Arg(2)->UseManualTime();
BENCHMARK_CAPTURE(Blend, nobody, kNobody)->Arg(1)->Arg(2)->UseManualTime();

}  // namespace
}  // namespace kelmo

BENCHMARK_MAIN();
