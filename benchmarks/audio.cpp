// SPDX-License-Identifier: GPL-3.0-or-later
// Analysis of one frame's sound (1764 samples of two channels), beside the bare transform that it
// contains. The counter `times_transform` is the ratio of both, measured in one run.
#include <benchmark/benchmark.h>
#include <fftw3.h>

#include <algorithm>
#include <chrono>
#include <cmath>

#include "framework/audio/audio_analysis.h"

namespace kelmo {
namespace {

constexpr int32_t kSamples = 1764;
constexpr int kTransformSize = 4096;

double Seconds(std::chrono::steady_clock::time_point start) {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// Of one run, the best of many batches.
double SecondsOfTransform() {
    float* const input = fftwf_alloc_real(kTransformSize);
    fftwf_complex* const output = fftwf_alloc_complex(kTransformSize);
    const fftwf_plan plan = fftwf_plan_dft_r2c_1d(kTransformSize, input, output, FFTW_ESTIMATE);
    for (int i = 0; i < kTransformSize; ++i) input[i] = std::sin(static_cast<float>(i) * 0.1F);
    double best = 1e9;
    for (int batch = 0; batch < 200; ++batch) {
        constexpr int kRuns = 20;
        const auto start = std::chrono::steady_clock::now();
        for (int i = 0; i < kRuns; ++i) fftwf_execute(plan);
        best = std::min(best, Seconds(start) / kRuns);
    }
    fftwf_destroy_plan(plan);
    fftwf_free(output);
    fftwf_free(input);
    return best;
}

void Analyse(benchmark::State& state, float exponent) {
    std::vector<int16_t> words;
    for (int32_t i = 0; i < kSamples * 2; ++i) {
        words.push_back(static_cast<int16_t>(20000 * std::sin(i * 0.05) + i * 7919 % 4001));
    }
    AudioSettings settings;
    settings.compressRatio = exponent;
    AudioAnalysis analysis;
    const double transform = SecondsOfTransform();
    int32_t position = 0;
    double best = 1e9;
    for (auto _ : state) {
        constexpr int kRuns = 20;
        const auto start = std::chrono::steady_clock::now();
        for (int i = 0; i < kRuns; ++i) {
            analysis.Analyse({2, kSamples, kSamples * 4, 2, words.data()}, settings, position++,
                             25.0F, 0.0F);
        }
        best = std::min(best, Seconds(start) / kRuns);
    }
    state.counters["us"] = best * 1e6;
    state.counters["us_transform"] = transform * 1e6;
    state.counters["times_transform"] = best / transform;
}

BENCHMARK_CAPTURE(Analyse, power, 1.0F);
BENCHMARK_CAPTURE(Analyse, decibels, 0.0F);
BENCHMARK_CAPTURE(Analyse, compressed, 0.2F);

}  // namespace
}  // namespace kelmo
