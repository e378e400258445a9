// SPDX-License-Identifier: GPL-3.0-or-later
// A whole `kelmo render` beside decoding and encoding alone: the same clip goes through ffmpeg with
// the same encoder settings and no filter. Counters: "ratio" is our time over ffmpeg's, whole
// programs from start to end, measured in turns in this run; "frames" how many a second are
// written.

#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <string>

namespace {

constexpr int kFrames = 150;
constexpr char kPeerEncoder[] = " -c:v libx264 -pix_fmt yuv420p -preset veryfast -crf 23 ";
constexpr char kEncoder[] = " --preset veryfast --crf 23 ";

std::string Temporary(const char* name) {
    return (std::filesystem::temp_directory_path() / name).string();
}

// Seconds that a command took; below zero when it failed.
double SecondsOf(const std::string& command) {
    const auto start = std::chrono::steady_clock::now();
    const int result = std::system((command + " >/dev/null 2>&1").c_str());
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
    return result == 0 ? taken.count() : -1;
}

// Zooming detail on every pixel: harder to code than most clips.
bool MakeClip(const std::string& clip) {
    return SecondsOf("ffmpeg -y -f lavfi -i mandelbrot=s=1280x720:r=25 -frames:v " +
                     std::to_string(kFrames) + kPeerEncoder + clip) >= 0;
}

void Render(benchmark::State& state, const char* effects) {
    const std::string clip = Temporary("kelmo_benchmark_render.mp4");
    if (!MakeClip(clip)) {
        state.SkipWithError("ffmpeg is missing or cannot make the clip");
        return;
    }
    const std::string output = Temporary("kelmo_benchmark_render_out.mp4");
    const std::string ours = std::string(KELMO_BIN_DIR "/kelmo render -q -y") + kEncoder + effects +
                             " -i " + clip + " -o " + output;
    const std::string theirs = "ffmpeg -y -i " + clip + kPeerEncoder + output;
    double our = 0;
    double their = 0;
    for (auto _ : state) {
        const double seconds = SecondsOf(ours);
        const double peer = SecondsOf(theirs);
        if (seconds < 0 || peer < 0) {
            state.SkipWithError(seconds < 0 ? "kelmo failed" : "ffmpeg failed");
            return;
        }
        our += seconds;
        their += peer;
        state.SetIterationTime(seconds);
    }
    state.counters["ratio"] = our / their;
    state.counters["frames"] = kFrames * static_cast<double>(state.iterations()) / our;
    std::filesystem::remove(clip);
    std::filesystem::remove(output);
}

BENCHMARK_CAPTURE(Render, OneLightFilter, "-e Vignette")
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Render, ThreeFilters, "-e 'Colour Grade' -e Glow -e 'VHS Tape'")
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

}  // namespace
