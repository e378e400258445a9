// SPDX-License-Identifier: GPL-3.0-or-later
// Decoding of ASTC textures, beside the decoder of the program `astcenc` on the same file and the
// same number of threads. The counter `times_astcenc` is its own reported decoding time (the best
// of three runs, without reading and writing files) over ours.
#include <benchmark/benchmark.h>

#include <unistd.h>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <opencv2/core.hpp>
#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>
#include <string>

#include "framework/astc/astc_file.h"

namespace {

constexpr int kSide = 2048;

/// A folder for the files of this run, removed at the end.
struct WorkFolder {
    std::filesystem::path path =
        std::filesystem::temp_directory_path() / ("kelmo-astc-" + std::to_string(getpid()));
    WorkFolder() { std::filesystem::create_directories(path); }
    ~WorkFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path, ignored);
    }
};

const std::filesystem::path& Folder() {
    static const WorkFolder folder;
    return folder.path;
}

/// Soft colours, lettering and some grain, with an alpha channel of its own: all kinds of blocks.
cv::Mat TestPicture() {
    cv::RNG random(5);
    cv::Mat small(24, 24, CV_8UC4);
    random.fill(small, cv::RNG::UNIFORM, 0, 256);
    cv::Mat picture;
    cv::resize(small, picture, {kSide, kSide}, 0, 0, cv::INTER_CUBIC);
    for (int line = 0; line < 24; ++line) {
        cv::putText(picture, "The quick brown fox & 0123456789", {20, 70 + 84 * line},
                    cv::FONT_HERSHEY_DUPLEX, 3.2, cv::Scalar(10 * line, 255 - 10 * line, 128, 255),
                    5);
    }
    cv::Mat grain(picture.size(), CV_8UC4);
    random.fill(grain, cv::RNG::UNIFORM, 0, 6);
    cv::add(picture, grain, picture);
    return picture;
}

/// The encoded picture; an empty path without an encoder. `blockSize` like "6x6".
std::string EncodedFile(const std::string& blockSize) {
    const std::string source = (Folder() / "source.png").string();
    const std::string target = (Folder() / (blockSize + ".astc")).string();
    if (!std::filesystem::exists(source)) cv::imwrite(source, TestPicture());
    if (!std::filesystem::exists(target)) {
        const std::string command =
            "astcenc -cl " + source + " " + target + " " + blockSize + " -fast -silent 2>/dev/null";
        if (std::system(command.c_str()) != 0) return {};
    }
    return target;
}

/// Seconds that astcenc reports for decoding; 0 when it cannot be read.
double SecondsOfAstcenc(const std::string& file, int threads) {
    const std::string command = "astcenc -dl " + file + " " + (Folder() / "out.tga").string() +
                                " -j " + std::to_string(threads) + " 2>/dev/null";
    double best = 0;
    for (int run = 0; run < 3; ++run) {
        FILE* const pipe = popen(command.c_str(), "r");
        if (pipe == nullptr) return 0;
        char line[256];
        double seconds = 0;
        while (std::fgets(line, sizeof line, pipe) != nullptr) {
            std::sscanf(line, " Decoding time: %lf", &seconds);
        }
        pclose(pipe);
        if (seconds > 0 && (best == 0 || seconds < best)) best = seconds;
    }
    return best;
}

void Decode(benchmark::State& state, const std::string& blockSize) {
    const int threads = static_cast<int>(state.range(0));
    const std::string path = EncodedFile(blockSize);
    if (path.empty()) {
        state.SkipWithError("astcenc is not installed");
        return;
    }
    const double theirs = SecondsOfAstcenc(path, threads);
    std::ifstream stream(path, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(stream),
                            std::istreambuf_iterator<char>()};
    std::string error;
    const auto file = astc_codec::LoadFromMemory(bytes.data(), bytes.size(), error);
    cv::Mat picture(kSide, kSide, CV_8UC4);
    cv::setNumThreads(threads);
    double best = 1e9;
    for (auto _ : state) {
        const auto start = std::chrono::steady_clock::now();
        if (!astc_codec::DecompressToImage(*file, picture.data, picture.total() * 4,
                                           picture.step)) {
            state.SkipWithError("a block did not decode");
            return;
        }
        best = std::min(
            best, std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
    }
    state.counters["MPix/s"] = kSide * kSide / 1e6 / best;
    state.counters["times_astcenc"] = theirs / best;
}

BENCHMARK_CAPTURE(Decode, 4x4, "4x4")->Arg(1)->Arg(2)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(Decode, 6x6, "6x6")->Arg(1)->Arg(2)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(Decode, 8x8, "8x8")->Arg(1)->Arg(2)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(Decode, 12x12, "12x12")
    ->Arg(1)
    ->Arg(2)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

}  // namespace
