// SPDX-License-Identifier: GPL-3.0-or-later
#include <CLI/CLI.hpp>

#include <algorithm>

#include <fmt/format.h>

#include "host/cli/command_line.h"
#include "host/cli/commands/doctor.h"
#include "host/cli/effect_json.h"

namespace kelmo::host {

namespace {

int Doctor(CommandLine& line, bool json) {
    const std::vector<Finding> findings = Examine(line.Where());
    const bool usable = std::none_of(findings.begin(), findings.end(), [](const Finding& finding) {
        return finding.health == Health::kBroken;
    });
    if (json) {
        nlohmann::ordered_json list = nlohmann::ordered_json::array();
        for (const Finding& finding : findings) {
            list.push_back({{"part", finding.part},
                            {"state", HealthName(finding.health)},
                            {"detail", finding.detail},
                            {"advice", finding.advice}});
        }
        PrintJson({{"usable", usable}, {"findings", list}});
    } else {
        for (const Finding& finding : findings) {
            fmt::print("{:<8} {}: {}\n", HealthName(finding.health), finding.part, finding.detail);
            if (!finding.advice.empty()) fmt::print("         -> {}\n", finding.advice);
        }
    }
    return usable ? kExitOk : kExitFailed;
}

}  // namespace

void AddDoctorCommand(CLI::App& app, CommandLine& line) {
    CLI::App* command =
        app.add_subcommand("doctor", "Check that everything is there, with advice where it is not");
    auto json = std::make_shared<bool>(false);
    command->add_flag("--json", *json, "Print JSON");
    command->callback([&line, json] { line.run = [&line, json] { return Doctor(line, *json); }; });
}

}  // namespace kelmo::host
