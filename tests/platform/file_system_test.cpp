// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/file_system.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "support/temporary_folder.h"

namespace kelmo::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> Names(const std::vector<FolderEntry>& entries) {
    std::vector<std::string> names;
    for (const FolderEntry& entry : entries) {
        names.push_back(entry.name + (entry.isFolder ? "/" : ""));
    }
    return names;
}

TEST(FileSystem, ListsInTheOrderOfTheBytesOfNames) {
    const TemporaryFolder folder;
    for (const char* const name : {"b", "B", "a10", "a9", "\u00e9", "z", ".hidden"}) {
        folder.Write(name, "");
    }
    folder.MakeFolder("c");
    folder.LinkFolder("d", folder.Path("c"));
    EXPECT_THAT(Names(ListFolder(folder.Path())),
                ElementsAre(".hidden", "B", "a10", "a9", "b", "c/", "d/", "z", "\u00e9"));
}

TEST(FileSystem, ListsNothingThatIsNoFolder) {
    const TemporaryFolder folder;
    const std::string file = folder.Write("file", "x");
    for (const std::string& path : {file, folder.Path("missing"), std::string(),
                                    std::string(100000, 'x'), std::string("a\0b", 3)}) {
        EXPECT_THAT(ListFolder(path), IsEmpty()) << path.substr(0, 100);
        EXPECT_FALSE(FolderExists(path));
    }
}

TEST(FileSystem, ReadsAllBytesOfAFile) {
    const TemporaryFolder folder;
    std::string large(200000, 'x');
    large[65536] = 0;
    for (const std::string& bytes :
         {std::string(), std::string("a\0\r\n\x1a", 5), std::string(65536, 'y'), large}) {
        const std::string path = folder.Write("\u30d5\u30a9\u30eb\u30c0/file", bytes);
        std::string read = "old";
        EXPECT_TRUE(ReadWholeFile(path, read));
        EXPECT_TRUE(read == bytes) << bytes.size();
    }
}

TEST(FileSystem, ReadsNothingThatIsNoFile) {
    const TemporaryFolder folder;
    for (const std::string& path :
         {folder.Path(), folder.Path("missing"), std::string(), std::string(100000, 'x')}) {
        std::string read = "old";
        EXPECT_FALSE(ReadWholeFile(path, read)) << path.substr(0, 100);
        EXPECT_EQ(read, "");
        EXPECT_FALSE(FileExists(path));
    }
}

TEST(FileSystem, ResolvesLinksToOneSpelling) {
    const TemporaryFolder folder;
    folder.MakeFolder("real");
    folder.LinkFolder("link", folder.Path("real"));
    EXPECT_EQ(CanonicalPath(folder.Path("link/../link")), CanonicalPath(folder.Path("real")));
    EXPECT_EQ(CanonicalPath(folder.Path("missing")), "");
}

TEST(FileSystem, CutsAPathAfterItsLastSeparator) {
    struct Case {
        const char* path;
        const char* folder;
    };
    constexpr Case kCases[] = {{"/a/b.conf", "/a/"},
                               {"C:\\a\\b.conf", "C:\\a\\"},
                               {"a\\b/c", "a\\b/"},
                               {"a/b\\c", "a/b\\"},
                               {"name", ""},
                               {"/", "/"},
                               {"", ""}};
    for (const Case& c : kCases) {
        EXPECT_EQ(FolderOf(c.path), c.folder) << c.path;
    }
}

}  // namespace
}  // namespace kelmo::test
