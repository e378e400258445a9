// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "host/media/decode/media_reader.h"

namespace kelmo::host {

/// What a run of the program left behind.
struct RunResult {
    int exitCode = -1;
    std::string out;
    std::string err;
};

/// Runs the built program in a folder of its own that holds small inputs:
/// dark.mkv (20 frames of 64x48 at 10 a second, luma 40, a tone), light.mkv (the same size and
/// rate, 20 frames, luma 200, silent), half.png (32x24, half transparent red).
class CliTest : public testing::Test {
protected:
    void SetUp() override;

    /// Words are passed as they are; the stand-in plug-in is used unless `plugins` names another.
    RunResult Run(const std::vector<std::string>& words, const std::string& plugins = "good") const;

    std::string Path(const std::string& name) const { return (folder / name).string(); }
    bool Exists(const std::string& name) const { return std::filesystem::exists(folder / name); }
    /// Names in the folder that were not there after SetUp, sorted.
    std::vector<std::string> NewFiles() const;
    /// Green of the middle pixel of each frame of a file.
    std::vector<int> Greens(const std::string& name) const;

    std::filesystem::path folder;
};

std::string ReadFile(const std::filesystem::path& path);

/// Runs a program with its words, output and errors caught.
RunResult RunProgram(const std::vector<std::string>& words, const std::filesystem::path& folder);

}  // namespace kelmo::host
