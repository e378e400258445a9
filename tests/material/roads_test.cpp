// SPDX-License-Identifier: GPL-3.0-or-later
// Pictures in memory with the engine's own context, and textures in the host's context: two
// processes, since a plug-in starts once, for one of them.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "tests/material/picture_compare.h"
#include "tests/material/test_pictures.h"

namespace kelmo::test {
namespace {

Picture Rendered(const std::string& effect, bool transition, bool onGpu) {
    const std::string folder = KELMO_TEST_OUTPUT_DIR "/material/roads";
    const std::string output = folder + (onGpu ? "/gpu.png" : "/memory.png");
    std::filesystem::remove(output);
    // LeakSanitizer falls over threads that end with the process, here often; the tests of the host
    // look for its leaks.
    std::string command =
        std::string("ASAN_OPTIONS=detect_leaks=0 \"" KELMO_BIN_DIR "/kelmo\" -q render -y -i \"") +
        folder + "/first.png\"" +
        (transition ? " -i \"" + folder + "/second.png\" --transition-only" : "") + " -e \"" +
        effect + "\" -o \"" + output + "\"" + (onGpu ? " --gpu" : "");
    EXPECT_EQ(std::system(command.c_str()), 0) << command;
    return ReadPng(output);
}

TEST(BothRoads, DrawTheSamePicture) {
    const std::string folder = KELMO_TEST_OUTPUT_DIR "/material/roads";
    std::filesystem::create_directories(folder);
    WritePng(folder + "/first.png", TestCard(96, 54));
    WritePng(folder + "/second.png", City(96, 54));
    const struct {
        const char* effect;
        bool transition;
    } cases[] = {
        {"Colour Grade", false},   // one pass
        {"Soft Blur", false},      // many passes, kept pictures
        {"Match Colour", false},   // reads pixels
        {"Film Dust", false},      // material
        {"Box Turn", true},        // vertices
        {"Moving Bubbles", true},  // instances, a sub-filter
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.effect);
        EXPECT_TRUE(Equals(Rendered(c.effect, c.transition, false),
                           Rendered(c.effect, c.transition, true), 1,
                           std::string("roads/") + c.effect));
    }
}

}  // namespace
}  // namespace kelmo::test
