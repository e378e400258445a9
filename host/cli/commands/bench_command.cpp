// SPDX-License-Identifier: GPL-3.0-or-later
#include <CLI/CLI.hpp>

#include <algorithm>
#include <chrono>

#include <fmt/format.h>

#include "host/cli/command_line.h"
#include "host/cli/effect_json.h"
#include "host/cli/interrupt.h"
#include "host/cli/option_parsing.h"
#include "host/cli/plugin_runtime.h"
#include "host/session/effect_chain.h"

namespace kelmo::host {

namespace {

constexpr int kWarmUpFrames = 5;  // shaders are built and buffers made in the first frames
constexpr FrameRate kBenchRate{25, 1};

struct BenchOptions {
    std::string effect;
    std::vector<std::string> parameters;
    std::string size = "1280x720";
    int64_t frames = 100;
    bool onGpu = false;
    bool json = false;
};

/// A smooth picture with fine detail, opaque.
Picture Pattern(PixelSize size, int shift) {
    Picture picture;
    picture.Resize(size.width, size.height);
    for (int y = 0; y < size.height; ++y) {
        uint8_t* row = picture.Row(y);
        for (int x = 0; x < size.width; ++x, row += 4) {
            row[0] = static_cast<uint8_t>(x + shift);
            row[1] = static_cast<uint8_t>(y * 2 + shift);
            row[2] = static_cast<uint8_t>((x ^ y) + shift);
            row[3] = 255;
        }
    }
    return picture;
}

double Milliseconds(std::chrono::steady_clock::duration time) {
    return std::chrono::duration<double, std::milli>(time).count();
}

/// Milliseconds of each frame after the warm-up.
std::vector<double> Measure(EffectChain& chain, PixelSize size, int64_t frames, bool transition) {
    Picture first = Pattern(size, 0);
    Picture second = Pattern(size, 90);
    Picture output;
    std::vector<int16_t> samples(2 * 1764, 0);
    FrameExtras extras;
    extras.samples = samples;
    std::vector<double> times;
    for (int64_t frame = 0; frame < frames + kWarmUpFrames && !Interrupted(); ++frame) {
        const auto begin = std::chrono::steady_clock::now();
        chain.Render(frame, first, transition ? &second : nullptr, extras, output);
        const auto end = std::chrono::steady_clock::now();
        if (frame >= kWarmUpFrames) times.push_back(Milliseconds(end - begin));
    }
    return times;
}

int Bench(CommandLine& line, const BenchOptions& options) {
    const PixelSize size = RequiredSize("--size", options.size);
    PluginRuntime runtime(line.Where(), line.console, options.onGpu);
    ChainLink link;
    link.effect = &runtime.Effects().Find(options.effect);
    for (const std::string& assignment : options.parameters) {
        link.tracks.push_back(ParseAssignment(*link.effect, assignment));
    }
    link.frames = options.frames + kWarmUpFrames;
    const EffectDescription& effect = *link.effect;
    std::vector<ChainLink> links;
    links.push_back(std::move(link));
    EffectChain chain(runtime.Plugin(), runtime.Services(), std::move(links), size.width,
                      size.height, kBenchRate, options.onGpu);
    CatchInterrupts();
    std::vector<double> times =
        Measure(chain, size, options.frames, effect.Type() == EffectType::kTransition);
    const bool cut = static_cast<int64_t>(times.size()) < options.frames;
    if (times.empty()) return kExitInterrupted;
    double sum = 0;
    for (const double time : times) sum += time;
    std::sort(times.begin(), times.end());
    const double perSecond = 1000.0 * static_cast<double>(times.size()) / std::max(sum, 1e-6);
    const double median = times[times.size() / 2];
    const double slow = times[times.size() * 95 / 100];
    if (options.json) {
        PrintJson({{"effect", EffectSummary(effect)},
                   {"width", size.width},
                   {"height", size.height},
                   {"gpu", options.onGpu},
                   {"frames", times.size()},
                   {"framesPerSecond", perSecond},
                   {"medianMilliseconds", median},
                   {"slowestTwentiethMilliseconds", slow}});
    } else {
        fmt::print(
            "{}: {:.1f} frames a second at {}x{}{}; median {:.2f} ms, 95 % below {:.2f} ms\n",
            effect.name, perSecond, size.width, size.height, options.onGpu ? " on the GPU" : "",
            median, slow);
    }
    return cut ? kExitInterrupted : kExitOk;
}

}  // namespace

void AddBenchCommand(CLI::App& app, CommandLine& line) {
    CLI::App* command =
        app.add_subcommand("bench", "Measure an effect alone, without reading and writing files");
    auto options = std::make_shared<BenchOptions>();
    command->add_option("-e,--effect", options->effect, "Name or GUID")
        ->required()
        ->type_name("EFFECT");
    command->add_option("-p,--param", options->parameters, "name=value")
        ->allow_extra_args(false)
        ->type_name("NAME=VALUE");
    command->add_option("--size", options->size, "Size of the frames")
        ->type_name("WxH")
        ->capture_default_str();
    command->add_option("--frames", options->frames, "How many frames are measured")
        ->check(Silent(CLI::PositiveNumber))
        ->type_name("N")
        ->capture_default_str();
    command->add_flag("--gpu", options->onGpu, "Keep the pictures on the graphics card");
    command->add_flag("--json", options->json, "Print JSON");
    command->callback(
        [&line, options] { line.run = [&line, options] { return Bench(line, *options); }; });
}

}  // namespace kelmo::host
