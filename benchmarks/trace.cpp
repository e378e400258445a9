// SPDX-License-Identifier: GPL-3.0-or-later
// Tracing of a full HD picture, beside the search for bare pixel contours in the same picture,
// which follows the same edges without fitting curves to them. The counter `times_contours` is the
// ratio of both, measured in one run.
#include <benchmark/benchmark.h>

#include <chrono>
#include <opencv2/imgproc.hpp>

#include "geometry/trace/bitmap_trace.h"

namespace kelmo {
namespace {

enum Picture { kText, kNoise };

/// Full HD; 0 is ink for the tracer, the shapes are 255 as in a mask.
cv::Mat Make(Picture kind) {
    cv::Mat picture(1080, 1920, CV_8UC1, cv::Scalar(0));
    if (kind == kText) {
        for (int line = 0; line < 9; ++line) {
            cv::putText(picture, "The quick brown fox & 0123456789",
                        cv::Point(30, 110 + 115 * line), cv::FONT_HERSHEY_COMPLEX, 3.0,
                        cv::Scalar(255), 7);
        }
        return picture;
    }
    cv::RNG random(3);
    cv::Mat noise(270, 480, CV_8UC1);
    random.fill(noise, cv::RNG::UNIFORM, 0, 256);
    cv::resize(noise, picture, picture.size(), 0, 0, cv::INTER_CUBIC);
    picture = picture > 150;
    // A mask has a border of background.
    cv::rectangle(picture, cv::Rect(cv::Point(), picture.size()), cv::Scalar(0));
    return picture;
}

double SecondsOfContours(const cv::Mat& picture) {
    std::vector<std::vector<cv::Point>> contours;
    double best = 1e9;
    for (int i = 0; i < 5; ++i) {
        const auto start = std::chrono::steady_clock::now();
        cv::findContours(picture, contours, cv::RETR_LIST, cv::CHAIN_APPROX_SIMPLE);
        best = std::min(
            best, std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
    }
    return best;
}

void Trace(benchmark::State& state) {
    cv::Mat picture = Make(static_cast<Picture>(state.range(0)));
    const double contours = SecondsOfContours(picture);
    const int before = cv::getNumThreads();
    cv::setNumThreads(static_cast<int>(state.range(1)));
    cv::Mat work;
    double seconds = 0;
    size_t paths = 0;
    for (auto _ : state) {
        const auto start = std::chrono::steady_clock::now();
        picture.copyTo(work);
        Bitmap bitmap(picture);
        Bitmap workBitmap(work);
        BitmapTrace trace;
        trace.Trace(&bitmap, &workBitmap);
        paths = trace.GetPathList().size();
        benchmark::DoNotOptimize(paths);
        seconds += std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    }
    cv::setNumThreads(before);
    state.counters["paths"] = static_cast<double>(paths);
    state.counters["times_contours"] = seconds / static_cast<double>(state.iterations()) / contours;
}

BENCHMARK(Trace)
    ->ArgNames({"noise", "threads"})
    ->ArgsProduct({{kText, kNoise}, {1, 2}})
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

}  // namespace
}  // namespace kelmo
