// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/dynamic_library.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "support/recording_host.h"
#include "support/temporary_folder.h"

namespace kelmo::test {
namespace {

using testing::HasSubstr;
using Answer = int (*)();

TEST(DynamicLibrary, GivesALibraryTheNameOfTheSystem) {
    struct Case {
        const char* name;
        const char* expected;
    };
    constexpr Case kCases[] = {
        {"st_mobile.dll", "st_mobile.so"},
        {"/a.dll/b.dll", "/a.dll/b.so"},
        {"filter.qor", "filter.qor"},
        {"libm.so.6", "libm.so.6"},
        {"TZOpenGLEffectMgr", "TZOpenGLEffectMgr"},
        {"", ""},
    };
    for (const Case& c : kCases) {
        EXPECT_EQ(SystemLibraryName(c.name), c.expected);
    }
}

TEST(DynamicLibrary, FindsABareNameBesideOurOwnBinary) {
    DynamicLibrary library;
    std::string error;
    ASSERT_TRUE(library.Open("kelmo_test_neighbour.dll", error)) << error;
    const auto answer = library.Symbol<Answer>("KelmoTestAnswer");
    ASSERT_NE(answer, nullptr);
    EXPECT_EQ(answer(), 42);
}

TEST(DynamicLibrary, FindsABareNameInThePluginFolderOfTheHost) {
    DynamicLibrary library;
    std::string error;
    EXPECT_FALSE(library.Open("kelmo_test_stranger.dll", error));
    EXPECT_THAT(error, HasSubstr("kelmo_test_stranger.so"));

    AcquiredHost host;
    host.pluginFolder = KELMO_STRANGER_FOLDER;
    EXPECT_TRUE(library.Open("kelmo_test_stranger.dll", error)) << error;
    EXPECT_TRUE(error.empty());
}

TEST(DynamicLibrary, FallsBackToTheSearchOfTheSystem) {
    DynamicLibrary library;
    std::string error;
    ASSERT_TRUE(library.Open("libm.so.6", error)) << error;
    EXPECT_NE(library.Symbol<void*>("cos"), nullptr);
}

TEST(DynamicLibrary, TellsWhyAFileDoesNotLoad) {
    const TemporaryFolder folder;
    DynamicLibrary library;
    std::string error;

    const std::string broken = folder.Write("broken.so", "this is no library");
    EXPECT_FALSE(library.Open(broken, error));
    EXPECT_THAT(error, HasSubstr("broken.so"));

    EXPECT_FALSE(library.Open(folder.Path("missing.dll"), error));
    EXPECT_THAT(error, HasSubstr(folder.Path("missing.so") + ": no such file"));

    EXPECT_FALSE(library.Open("", error));
    EXPECT_FALSE(error.empty());
    EXPECT_FALSE(library.IsOpen());
}

TEST(DynamicLibrary, ReportsABrokenFileOfThePluginFolderInsteadOfSearchingOn) {
    const TemporaryFolder folder;
    folder.Write("libm.so.6", "this is no library");
    AcquiredHost host;
    host.pluginFolder = folder.Path();
    DynamicLibrary library;
    std::string error;
    EXPECT_FALSE(library.Open("libm.so.6", error));
    EXPECT_THAT(error, HasSubstr(folder.Path("libm.so.6")));
}

TEST(DynamicLibrary, GivesNullForMissingSymbolsAndAfterRelease) {
    DynamicLibrary library;
    std::string error;
    EXPECT_EQ(library.Symbol<Answer>("KelmoTestAnswer"), nullptr);
    ASSERT_TRUE(library.Open("kelmo_test_neighbour.dll", error)) << error;
    EXPECT_EQ(library.Symbol<Answer>("NoSuchSymbol"), nullptr);

    DynamicLibrary owner = std::move(library);
    EXPECT_FALSE(library.IsOpen());
    EXPECT_NE(owner.Symbol<Answer>("KelmoTestAnswer"), nullptr);
    owner.Release();
    EXPECT_EQ(owner.Symbol<Answer>("KelmoTestAnswer"), nullptr);
}

}  // namespace
}  // namespace kelmo::test
