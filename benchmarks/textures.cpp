// SPDX-License-Identifier: GPL-3.0-or-later
// Loading of texture slots as `InitEffect` does it, beside the bare decoding of the same files by
// OpenCV on one thread, without conversion or reversal. The counter `times_bare` is our time over
// that one, measured in one run: below 1 is faster. A last benchmark is the render thread's look at
// a loaded frame.
#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdio>
#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>

#include "framework/textures/texture_file.h"
#include "framework/textures/texture_loader.h"
#include "support/temporary_folder.h"

namespace kelmo {
namespace {

constexpr int kFiles = 24;

std::string FileName(const test::TemporaryFolder& folder, int index) {
    char name[16];
    std::snprintf(name, sizeof name, "a%04d.png", index);
    return folder.Path(name);
}

/// Pictures of 640 x 360 with alpha, as an animated sticker has them.
void WriteFiles(const test::TemporaryFolder& folder) {
    cv::RNG random(7);
    cv::Mat small(9, 16, CV_8UC4);
    for (int i = 0; i < kFiles; ++i) {
        random.fill(small, cv::RNG::UNIFORM, 0, 256);
        cv::Mat picture;
        cv::resize(small, picture, {640, 360}, 0, 0, cv::INTER_CUBIC);
        cv::imwrite(FileName(folder, i), picture);
    }
}

double Seconds(std::chrono::steady_clock::time_point start) {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

double SecondsOfBareDecoding(const test::TemporaryFolder& folder) {
    double best = 1e9;
    for (int run = 0; run < 5; ++run) {
        // All are kept, as a slot keeps them: fresh memory is a good part of the time.
        std::vector<cv::Mat> pictures;
        const auto start = std::chrono::steady_clock::now();
        for (int i = 0; i < kFiles; ++i) {
            pictures.push_back(cv::imread(FileName(folder, i), cv::IMREAD_UNCHANGED));
        }
        best = std::min(best, Seconds(start));
    }
    return best;
}

/// One slot with a sequence, or each file as a slot of its own.
void Load(benchmark::State& state, bool asSlots) {
    const test::TemporaryFolder folder;
    WriteFiles(folder);
    auto info = std::make_shared<NLEFilterInfo>();
    info->textureCount = asSlots ? kFiles : 1;
    for (int i = 0; i < info->textureCount; ++i) {
        info->AddTexture(i, asSlots ? FileName(folder, i)
                                    : folder.Path("a[" + std::to_string(kFiles) + "].png"));
    }
    const double bare = SecondsOfBareDecoding(folder);
    cv::setNumThreads(static_cast<int>(state.range(0)));
    double best = 1e9;
    for (auto _ : state) {
        std::shared_ptr<TextureFrames> frames;
        std::shared_ptr<std::vector<TexDesc>> descs;
        const auto start = std::chrono::steady_clock::now();
        LoadTextures(info, frames, descs, false);
        best = std::min(best, Seconds(start));
        if (frames->Frame(0, 0).empty()) state.SkipWithError("nothing was decoded");
    }
    state.counters["times_bare"] = best / bare;
}

void FrameOfTheMoment(benchmark::State& state) {
    TextureFrames frames(1);
    FrameList& list = frames.Publish(0, 100);
    for (std::size_t i = 0; i < 100; ++i) list.Store(i, cv::Mat(8, 8, CV_8UC4));
    int32_t position = 0;
    for (auto _ : state) {
        const FrameList& present = frames.Slot(0);
        benchmark::DoNotOptimize(
            MaterialView::Of(present.Frame(FrameIndexAt(position++, 30.0F, present.Count()))));
    }
}

BENCHMARK_CAPTURE(Load, sequence, false)
    ->Arg(1)
    ->Arg(2)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK_CAPTURE(Load, slots, true)->Arg(1)->Arg(2)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(FrameOfTheMoment);

}  // namespace
}  // namespace kelmo
