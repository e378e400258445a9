// SPDX-License-Identifier: GPL-3.0-or-later
// What effects measure on the CPU, beside plain OpenCV; and the CPU time of each effect's frame
// without the engine.
#include <benchmark/benchmark.h>

#include <chrono>
#include <functional>
#include <opencv2/imgproc.hpp>

#include "catalogue/filter_catalogue.h"
#include "effects/image/color_statistics.h"
#include "effects/image/star_analysis.h"
#include "framework/filter/effect_registry.h"
#include "tests/effects/support/material_effect.h"

namespace {

using namespace kelmo;

/// A picture with texture and some highlights.
cv::Mat Picture(int width, int height) {
    cv::Mat noise(height, width, CV_8UC4);
    cv::RNG rng(4);
    rng.fill(noise, cv::RNG::UNIFORM, 0, 200);
    cv::GaussianBlur(noise, noise, cv::Size(0, 0), 6.0);
    for (int i = 0; i < 30; ++i) {
        cv::circle(noise, {rng.uniform(0, width), rng.uniform(0, height)}, 7,
                   cv::Scalar(250, 250, 250, 255), cv::FILLED);
    }
    return noise;
}

double Seconds(const std::function<void()>& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// Runs both in turns, so that whatever else the machine does meets them alike.
void Compare(benchmark::State& state, const char* ratio, const std::function<void()>& ours,
             const std::function<void()>& plain) {
    ours();
    plain();
    double oursTime = 0.0;
    double plainTime = 0.0;
    for (auto _ : state) {
        oursTime += Seconds(ours);
        plainTime += Seconds(plain);
    }
    const auto rounds = static_cast<double>(state.iterations());
    state.counters["ours_ms"] = 1e3 * oursTime / rounds;
    state.counters["plain_ms"] = 1e3 * plainTime / rounds;
    state.counters[ratio] = oursTime / plainTime;
}

void MatchColourStatistics(benchmark::State& state) {
    const cv::Mat picture = Picture(1920, 1080);
    cv::Mat scratch;
    Compare(
        state, "ours/opencv",
        [&] { benchmark::DoNotOptimize(MeasureColorParallel(picture, scratch)); },
        [&] { benchmark::DoNotOptimize(MeasureColorSerial(picture)); });
}
BENCHMARK(MatchColourStatistics)->Unit(benchmark::kMillisecond);

void StarHighlights(benchmark::State& state) {
    const cv::Mat picture = Picture(1920, 1080);
    StarAnalysis stars;
    cv::Mat gray;
    cv::Mat mask;
    cv::cvtColor(picture, gray, cv::COLOR_BGRA2GRAY);
    const int threshold = MeasureHighlights(gray).threshold;
    Compare(
        state, "ours/opencv_calls", [&] { benchmark::DoNotOptimize(stars.Run(picture, 60.0F)); },
        [&] {
            cv::cvtColor(picture, gray, cv::COLOR_BGRA2GRAY);
            cv::threshold(gray, mask, threshold - 1, 255.0, cv::THRESH_BINARY);
            double most = 0.0;
            cv::minMaxLoc(gray, nullptr, &most);
            cv::dilate(mask, mask, cv::getStructuringElement(cv::MORPH_RECT, {9, 9}));
            std::vector<std::vector<cv::Point>> contours;
            cv::findContours(mask, contours, cv::RETR_EXTERNAL, cv::CHAIN_APPROX_SIMPLE);
            benchmark::DoNotOptimize(contours.size());
        });
}
BENCHMARK(StarHighlights)->Unit(benchmark::kMillisecond);

void EffectFrame(benchmark::State& state, const std::string& guid) {
    test::MaterialEffects effects;
    effects.Engine().recording = false;
    const auto effect = effects.Make(guid, 1280, 720);
    cv::Mat first = Picture(1280, 720);
    cv::Mat second = Picture(1280, 720);
    int32_t position = 0;
    for (auto _ : state) {
        test::DrawFrame(*effect, position, test::RecordOf(first), test::RecordOf(second));
        position = (position + 1) % 100;
    }
}

void RegisterEffectFrames() {
    test::MaterialEffects fillsTheCatalogue;
    for (const auto& info : GetCatalogue().All()) {
        if (!EffectRegistry::Instance().Find(info->guid)) continue;
        benchmark::RegisterBenchmark(("Frame/" + info->name).c_str(), [guid = info->guid](
                                                                          benchmark::State& state) {
            EffectFrame(state, guid);
        })->Unit(benchmark::kMicrosecond);
    }
}

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    RegisterEffectFrames();
    benchmark::RunSpecifiedBenchmarks();
}
