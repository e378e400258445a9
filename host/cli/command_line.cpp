// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/cli/command_line.h"

#include <CLI/CLI.hpp>

#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

#include <fmt/format.h>

#include "host/media/common/media_error.h"
#include "host/session/host_error.h"

namespace kelmo::host {

namespace {

void AddCommonOptions(CLI::App& app, CommandLine& line) {
    app.add_option("--plugins", line.plugins, "Folder of the plug-in and the engines")
        ->envname("KELMO_PLUGINS")
        ->type_name("DIR");
    app.add_option("--resources", line.resources, "Folder that holds qor_effect/")
        ->envname("KELMO_RESOURCES")
        ->type_name("DIR");
    app.add_flag("-v,--verbose", line.verbose, "Say more; twice: everything the plug-in logs");
    app.add_flag("-q,--quiet", line.quiet, "Say nothing but errors");
}

/// A usage error of the parser as one line.
std::string OneLine(std::string text) {
    while (!text.empty() && text.back() == '\n') text.pop_back();
    for (char& c : text) {
        if (c == '\n') c = ' ';
    }
    return text;
}

int Execute(CommandLine& line) {
    try {
        return line.run();
    } catch (const UsageError& error) {
        line.console.Error(error.what());
        return kExitUsage;
    } catch (const std::bad_alloc&) {
        line.console.Error("not enough memory; try a smaller --size");
    } catch (const std::exception& error) {
        line.console.Error(error.what());
    }
    return kExitFailed;
}

}  // namespace

void AddVersionCommand(CLI::App& app, CommandLine& line) {
    CLI::App* command = app.add_subcommand("version", "Print the version");
    command->callback([&line] {
        line.run = [] {
            std::printf("kelmo %s\n", KELMO_VERSION);
            return kExitOk;
        };
    });
}

void AddDeveloperCommand(CLI::App& app, CommandLine& line, const std::string& name) {
    CLI::App* command = app.add_subcommand(
        name,
        fmt::format("Run the developer program kelmo-{} with the arguments that follow", name));
    // Every argument is the other program's, --help too.
    command->prefix_command();
    command->fallthrough(false);
    command->set_help_flag();
    command->callback([&line, command, name] {
        const std::vector<std::string> given = command->remaining();
        line.run = [&line, given, name]() -> int {
            const std::string program = (line.Where().programs / ("kelmo-" + name)).string();
            std::vector<std::string> words = {program};
            words.insert(words.end(), given.begin(), given.end());
            std::vector<char*> arguments;
            for (std::string& word : words) arguments.push_back(word.data());
            arguments.push_back(nullptr);
            execv(program.c_str(), arguments.data());
            throw HostError(fmt::format(
                "cannot run {}: {}; it is built with the developer programs of this project",
                program, std::strerror(errno)));
        };
    });
}

int RunCommandLine(int argc, char** argv) {
    CommandLine line;
    CLI::App app("Apply video effects, transitions and titles to files, and look at them.",
                 "kelmo");
    app.set_help_flag("-h,--help", "Print this help and exit");
    app.require_subcommand(1);
    app.fallthrough();
    app.get_formatter()->column_width(34);
    AddCommonOptions(app, line);
    AddListCommand(app, line);
    AddInfoCommand(app, line);
    AddRenderCommand(app, line);
    AddTitleCommand(app, line);
    AddGalleryCommand(app, line);
    AddAnalyseCommand(app, line);
    AddDoctorCommand(app, line);
    AddBenchCommand(app, line);
    AddDeveloperCommand(app, line, "mesh");
    AddDeveloperCommand(app, line, "measure");
    AddVersionCommand(app, line);
    try {
        app.parse(argc, argv);
    } catch (const CLI::Success& help) {
        return app.exit(help);
    } catch (const UsageError& error) {
        line.console.Error(error.what());
        return kExitUsage;
    } catch (const CLI::ParseError& error) {
        line.console.Error(OneLine(error.what()) + "; see `kelmo --help`");
        return kExitUsage;
    }
    line.console.SetVerbosity(line.quiet ? -1 : line.verbose);
    return Execute(line);
}

}  // namespace kelmo::host
