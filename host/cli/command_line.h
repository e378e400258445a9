// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <string>

#include "host/cli/console.h"
#include "host/cli/installation.h"

namespace CLI {
class App;
}

namespace kelmo::host {

inline constexpr int kExitOk = 0;
inline constexpr int kExitFailed = 1;
inline constexpr int kExitUsage = 2;

/// Version of every JSON document that the command prints.
inline constexpr int kJsonSchema = 1;

/// Options that every command takes, and the command that was chosen.
struct CommandLine {
    std::string plugins;
    std::string resources;
    int verbose = 0;
    bool quiet = false;
    Console console;
    /// Does the work and returns the exit code. Set when a command was recognised.
    std::function<int()> run;

    Installation Where() const { return Installation::Find(plugins, resources); }
};

/// Each adds one command to the application; the command line outlives it.
void AddListCommand(CLI::App& app, CommandLine& line);
void AddInfoCommand(CLI::App& app, CommandLine& line);
void AddRenderCommand(CLI::App& app, CommandLine& line);
void AddTitleCommand(CLI::App& app, CommandLine& line);
void AddGalleryCommand(CLI::App& app, CommandLine& line);
void AddAnalyseCommand(CLI::App& app, CommandLine& line);
void AddDoctorCommand(CLI::App& app, CommandLine& line);
void AddBenchCommand(CLI::App& app, CommandLine& line);
/// Hands its arguments to the program "kelmo-NAME" beside this one.
void AddDeveloperCommand(CLI::App& app, CommandLine& line, const std::string& name);
void AddVersionCommand(CLI::App& app, CommandLine& line);

/// Parses and runs; returns the exit code of the program.
int RunCommandLine(int argc, char** argv);

}  // namespace kelmo::host
