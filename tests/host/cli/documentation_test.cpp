// SPDX-License-Identifier: GPL-3.0-or-later
// docs/cli.md and the program say the same: every option of a command stands in its section, and
// every option in a section is one of the command.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <regex>
#include <set>

#include "cli_fixture.h"

namespace kelmo::host {
namespace {

std::set<std::string> LongOptions(const std::string& text) {
    static const std::regex option("--[a-z][a-z-]*");
    std::set<std::string> found;
    for (std::sregex_iterator it(text.begin(), text.end(), option), end; it != end; ++it) {
        found.insert(it->str());
    }
    return found;
}

/// From the heading of the section to the next heading of its rank.
std::string Section(const std::string& document, const std::string& heading) {
    const size_t begin = document.find("\n## " + heading + "\n");
    if (begin == std::string::npos) return {};
    const size_t end = document.find("\n## ", begin + 1);
    return document.substr(begin, end == std::string::npos ? end : end - begin);
}

class Documentation : public CliTest, public testing::WithParamInterface<const char*> {};

TEST_P(Documentation, HasTheOptionsOfTheCommand) {
    const std::string command = GetParam();
    const std::string document = ReadFile(std::string(KELMO_SOURCE_DIR) + "/docs/cli.md");
    const RunResult help = RunProgram({KELMO_BIN_DIR "/kelmo", command, "--help"}, folder);
    ASSERT_EQ(help.exitCode, 0) << help.err;
    const std::string section = Section(document, "kelmo " + command);
    ASSERT_NE(section, "") << "no section about " << command;
    std::set<std::string> offered = LongOptions(help.out);
    offered.erase("--help");
    std::set<std::string> documented = LongOptions(section);
    // Options of all commands may be spoken of anywhere.
    for (const char* common : {"--plugins", "--resources", "--verbose", "--quiet", "--help"}) {
        documented.erase(common);
    }
    EXPECT_EQ(documented, offered);
}

INSTANTIATE_TEST_SUITE_P(Commands, Documentation,
                         testing::Values("list", "info", "render", "gallery", "bench", "doctor",
                                         "analyse", "version"));

TEST_F(CliTest, TheEffectsOfTheDocumentAreThere) {
    if (!std::filesystem::exists(KELMO_PLUGIN_DIR "/qorOpenGLFilterPlugin.qor")) {
        GTEST_SKIP() << "the plug-in is not built";
    }
    const std::string names = RunProgram({KELMO_BIN_DIR "/kelmo", "list", "--json"}, folder).out;
    const std::string document = ReadFile(std::string(KELMO_SOURCE_DIR) + "/docs/cli.md");
    static const std::regex example("kelmo (?:info|render .*-e) (\"[^\"]+\")");
    std::sregex_iterator it(document.begin(), document.end(), example), end;
    EXPECT_GT(std::distance(it, end), 3);
    for (; it != end; ++it) {
        EXPECT_THAT(names, testing::HasSubstr("\"name\": " + it->str(1)));
    }
}

TEST_F(CliTest, TheDocumentHasTheOptionsOfAllCommands) {
    const std::string document = ReadFile(std::string(KELMO_SOURCE_DIR) + "/docs/cli.md");
    const RunResult help = RunProgram({KELMO_BIN_DIR "/kelmo", "--help"}, folder);
    for (const std::string& option : LongOptions(help.out)) {
        EXPECT_THAT(Section(document, "Options of every command"), testing::HasSubstr(option));
    }
    for (const char* command : {"list", "info", "render", "gallery", "bench", "analyse", "doctor",
                                "mesh", "measure", "version"}) {
        EXPECT_THAT(help.out, testing::HasSubstr(std::string("\n  ") + command));
        EXPECT_NE(Section(document, std::string("kelmo ") + command), "") << command;
    }
}

}  // namespace
}  // namespace kelmo::host
