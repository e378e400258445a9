// SPDX-License-Identifier: GPL-3.0-or-later
#include <CLI/CLI.hpp>

#include <algorithm>

#include <fmt/format.h>

#include "host/cli/command_line.h"
#include "host/cli/effect_json.h"
#include "host/cli/plugin_runtime.h"

namespace kelmo::host {

namespace {

struct InfoOptions {
    std::string effect;
    bool json = false;
};

void PrintEffect(const EffectDescription& effect) {
    fmt::print("{}\n", effect.name);
    fmt::print("  GUID    {}\n", effect.guid);
    fmt::print("  type    {}, {}\n", TypeName(effect.Type()),
               effect.Type() == EffectType::kTransition ? "two clips" : "one clip");
    fmt::print("  sound   {}\n", effect.WantsAudio() ? "reacts to it" : "does not use it");
    if (effect.parameters.empty()) {
        fmt::print("  no parameters\n");
        return;
    }
    size_t widest = 4;
    size_t widestTitle = 5;
    for (const auto& parameter : effect.parameters) {
        widest = std::max(widest, parameter.name.size());
        widestTitle = std::max(widestTitle, parameter.display.size());
    }
    fmt::print("\n  {:<{}}  {:<{}}  {:<11}  {:<12}  {}\n", "NAME", widest, "TITLE", widestTitle,
               "KIND", "DEFAULT", "RANGE");
    for (const auto& parameter : effect.parameters) {
        fmt::print("  {:<{}}  {:<{}}  {:<11}  {:<12}  {}{}\n", parameter.name, widest,
                   parameter.display, widestTitle, KindName(parameter.kind), DefaultText(parameter),
                   RangeText(parameter), parameter.visible ? "" : " (hidden in editors)");
    }
}

int Info(CommandLine& line, const InfoOptions& options) {
    PluginRuntime runtime(line.Where(), line.console, false);
    const EffectDescription& effect = runtime.Effects().Find(options.effect);
    if (options.json) {
        PrintJson(EffectDetails(effect));
    } else {
        PrintEffect(effect);
    }
    return kExitOk;
}

}  // namespace

void AddInfoCommand(CLI::App& app, CommandLine& line) {
    CLI::App* command = app.add_subcommand("info", "Describe an effect and its parameters");
    auto options = std::make_shared<InfoOptions>();
    command->add_option("EFFECT", options->effect, "Name or GUID")->required();
    command->add_flag("--json", options->json, "Print JSON");
    command->callback(
        [&line, options] { line.run = [&line, options] { return Info(line, *options); }; });
}

}  // namespace kelmo::host
