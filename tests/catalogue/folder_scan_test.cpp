// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/folder_scan.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <string>

#include "support/as_nobody.h"
#include "support/recording_host.h"
#include "support/temporary_folder.h"

namespace kelmo::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::string Conf(const std::string& guid) {
    return R"({"OPENGL": "f.frag", "GUID": ")" + guid + "\"}";
}

std::string Xml(const std::string& guid) {
    return "<Filter><GUID>" + guid + "</GUID></Filter>";
}

std::vector<std::string> Guids(const std::string& folder) {
    std::vector<std::shared_ptr<NLEFilterInfo>> found;
    ScanFolder(folder, found);
    std::vector<std::string> guids;
    for (const auto& info : found) {
        guids.push_back(info->guid);
    }
    return guids;
}

TEST(FolderScan, FindsSubFoldersFirstInNameOrder) {
    const TemporaryFolder folder;
    folder.Write("a.conf", Conf("top"));
    folder.Write("z/f.conf", Conf("z"));
    folder.Write("b/f.conf", Conf("b"));
    folder.Write("b/\u5c42/f.conf", Conf("b/layer"));
    folder.Write("B/filter.xml", Xml("B"));
    EXPECT_THAT(Guids(folder.Path()), ElementsAre("B", "b/layer", "b", "z", "top"));
}

TEST(FolderScan, TakesTheLastConfFileAndHidesTheXmlFileBesideIt) {
    const TemporaryFolder folder;
    folder.Write("1/filter.xml", Xml("xml"));
    folder.Write("1/a.conf", Conf("first"));
    folder.Write("1/b.conf.bak", Conf("last"));
    folder.Write("2/my.filter.xml.old", Xml("only xml"));
    folder.Write("3/filter.xml", Xml("hidden"));
    folder.Write("3/broken.conf", "{");
    folder.Write("4/FILTER.XML", Xml("other case"));
    folder.Write("4/x.CONF", Conf("other case"));
    // Nobody writes into it: who reads it waits for ever.
    ASSERT_EQ(mkfifo(folder.Path("1/c.conf").c_str(), 0600), 0);
    EXPECT_THAT(Guids(folder.Path()), ElementsAre("last", "only xml"));
}

TEST(FolderScan, LooksIntoAFolderWhoseNameReadsLikeAFile) {
    const TemporaryFolder folder;
    folder.Write("x.conf/f.conf", Conf("inside"));
    EXPECT_THAT(Guids(folder.Path()), ElementsAre("inside"));
}

TEST(FolderScan, AddsNothingForWhatCannotBeListed) {
    const TemporaryFolder folder;
    const std::string file = folder.Write("f.conf", Conf("G"));
    EXPECT_THAT(Guids(folder.Path("missing")), IsEmpty());
    EXPECT_THAT(Guids(file), IsEmpty());
    EXPECT_THAT(Guids(""), IsEmpty());
}

TEST(FolderScan, NamesAFolderThatCannotBeReadAndGoesOn) {
    const TemporaryFolder folder;
    std::filesystem::permissions(folder.Path(), std::filesystem::perms::all);
    folder.Write("locked/f.conf", Conf("locked"));
    folder.Write("open/f.conf", Conf("open"));
    const std::string locked = folder.Path("locked");
    std::filesystem::permissions(locked, std::filesystem::perms::none);
    AcquiredHost host;
    {
        const AsNobody nobody;
        EXPECT_THAT(Guids(folder.Path()), ElementsAre("open"));
    }
    EXPECT_THAT(host.Texts(kLogWarning),
                ElementsAre("cannot read the folder " + locked + ": Permission denied"));
    std::filesystem::permissions(locked, std::filesystem::perms::owner_all);
}

TEST(FolderScan, AppendsToWhatIsThere) {
    const TemporaryFolder folder;
    folder.Write("f.conf", Conf("new"));
    std::vector<std::shared_ptr<NLEFilterInfo>> found = {std::make_shared<NLEFilterInfo>()};
    ScanFolder(folder.Path(), found);
    ASSERT_EQ(found.size(), 2u);
    EXPECT_EQ(found[1]->guid, "new");
}

TEST(FolderScan, EndsOnACircleOfLinks) {
    const TemporaryFolder folder;
    folder.Write("a/f.conf", Conf("a"));
    folder.Write("b/f.conf", Conf("b"));
    // Every path through these links branches again; without a memory this would never end.
    for (const char* const link : {"a/1", "a/2", "b/1", "b/2"}) {
        folder.LinkFolder(link, folder.Path());
    }
    folder.LinkFolder("a/b", folder.Path("b"));
    EXPECT_THAT(Guids(folder.Path()), ElementsAre("b", "a"));
}

TEST(FolderScan, StopsAtSixtyFourLevels) {
    const TemporaryFolder folder;
    std::string path;
    for (int depth = 1; depth <= 66; ++depth) {
        path += "d/";
        folder.Write(path + "f.conf", Conf(std::to_string(depth)));
    }
    const std::vector<std::string> guids = Guids(folder.Path());
    ASSERT_EQ(guids.size(), 64u);
    EXPECT_EQ(guids.front(), "64");
}

}  // namespace
}  // namespace kelmo::test
