// SPDX-License-Identifier: GPL-3.0-or-later
#include <CLI/CLI.hpp>

#include <algorithm>
#include <cstdio>

#include <fmt/format.h>

#include "host/cli/command_line.h"
#include "host/cli/effect_json.h"
#include "host/cli/option_parsing.h"
#include "host/cli/plugin_runtime.h"
#include "host/session/text_values.h"

namespace kelmo::host {

namespace {

struct ListOptions {
    std::string type;
    std::string search;
    bool all = false;
    bool json = false;
};

bool Matches(const EffectDescription& effect, const ListOptions& options) {
    if (!options.type.empty() && options.type != TypeName(effect.Type())) return false;
    const std::string word = LowerCase(options.search);
    if (effect.IsPart() && word.empty() && !options.all) return false;
    return LowerCase(effect.name).find(word) != std::string::npos ||
           LowerCase(effect.guid).find(word) != std::string::npos;
}

int List(CommandLine& line, const ListOptions& options) {
    PluginRuntime runtime(line.Where(), line.console, false);
    std::vector<const EffectDescription*> chosen;
    for (const EffectDescription& effect : runtime.Effects().Effects()) {
        if (Matches(effect, options)) chosen.push_back(&effect);
    }
    if (options.json) {
        nlohmann::ordered_json effects = nlohmann::ordered_json::array();
        for (const EffectDescription* effect : chosen) effects.push_back(EffectSummary(*effect));
        PrintJson({{"effects", effects}});
        return kExitOk;
    }
    size_t widest = 4;
    for (const EffectDescription* effect : chosen) widest = std::max(widest, effect->name.size());
    for (const EffectDescription* effect : chosen) {
        fmt::print("{:<{}}  {:<10}  {}\n", effect->name, widest, TypeName(effect->Type()),
                   effect->guid);
    }
    if (chosen.empty()) line.console.Note("no effect matches");
    return kExitOk;
}

}  // namespace

void AddListCommand(CLI::App& app, CommandLine& line) {
    CLI::App* command = app.add_subcommand("list", "List the effects: name, type, GUID");
    auto options = std::make_shared<ListOptions>();
    command->add_option("--type", options->type, "Only effects of this type")
        ->check(Silent(CLI::IsMember({"filter", "transition", "text"})))
        ->type_name("filter|transition|text");
    command
        ->add_option("--search", options->search, "Only effects whose name or GUID has this word")
        ->type_name("WORD");
    command->add_flag("--all", options->all, "Parts of other effects too");
    command->add_flag("--json", options->json, "Print JSON");
    command->callback(
        [&line, options] { line.run = [&line, options] { return List(line, *options); }; });
}

}  // namespace kelmo::host
