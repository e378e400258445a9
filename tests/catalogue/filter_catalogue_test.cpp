// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/filter_catalogue.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

#include "catalogue/json_reader.h"
#include "support/recording_host.h"
#include "support/temporary_folder.h"

namespace kelmo::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr const char* kMain = "qor_effect/material/OpenGLFilter.conf";

std::string Entry(const std::string& guid, const std::string& more = "") {
    return R"({"GUID": ")" + guid + R"(", "OPENGL": "f.frag")" + more + "}";
}

std::string Listed(const std::string& guid) {
    return Entry(guid, R"(, "DATAPATH": "/qor_effect/material/)" + guid + "/\"");
}

std::shared_ptr<NLEFilterInfo> Named(const std::string& guid) {
    auto info = std::make_shared<NLEFilterInfo>();
    info->guid = guid;
    return info;
}

std::vector<std::string> Guids(const FilterCatalogue& catalogue) {
    std::vector<std::string> guids;
    for (const auto& info : catalogue.All()) {
        guids.push_back(info->guid);
    }
    return guids;
}

std::vector<std::string> Load(const TemporaryFolder& folder) {
    FilterCatalogue catalogue;
    LoadCatalogueInto(catalogue, folder.Path());
    return Guids(catalogue);
}

TEST(FilterCatalogue, KeepsTheFirstOfTwoWithOneGuid) {
    FilterCatalogue catalogue;
    const auto first = Named("A");
    EXPECT_TRUE(catalogue.AddFilter(first));
    EXPECT_TRUE(catalogue.AddFilter(Named("B")));
    EXPECT_FALSE(catalogue.AddFilter(Named("A")));
    EXPECT_FALSE(catalogue.AddFilter(nullptr));
    EXPECT_EQ(catalogue.Count(), 2u);
    EXPECT_EQ(catalogue.FindFilter("A"), first);
    EXPECT_EQ(catalogue.At(0), first);
    EXPECT_EQ(catalogue.At(2), nullptr);
    EXPECT_EQ(catalogue.FindFilter("a"), nullptr);
    EXPECT_EQ(catalogue.FindFilter(""), nullptr);
}

TEST(FilterCatalogue, TakesAdditionsFromSeveralThreads) {
    FilterCatalogue catalogue;
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([&catalogue] {
            for (int i = 0; i < 200; ++i) {
                catalogue.AddFilter(Named(std::to_string(i)));
                ASSERT_NE(catalogue.FindFilter(std::to_string(i)), nullptr);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(catalogue.Count(), 200u);
}

TEST(FilterCatalogue, LoadsTheListOfTheMainFile) {
    AcquiredHost host;
    const TemporaryFolder folder;
    const std::string file =
        folder.Write(kMain, "[" + Listed("B") + "," + Entry("without folder") + ",3,null,[]," +
                                Listed("A") + "," + Listed("B") + "]");
    folder.Write("qor_effect/nle_default/x/f.conf", Entry("scanned"));
    FilterCatalogue catalogue;
    LoadCatalogueInto(catalogue, folder.Path());
    EXPECT_THAT(Guids(catalogue), ElementsAre("B", "A"));
    EXPECT_EQ(catalogue.At(1)->openglPath, folder.Path("qor_effect/material/A/f.frag"));
    EXPECT_EQ(ResourceRoot(), folder.Path());
    EXPECT_THAT(host.Lines(), ElementsAre(LogLine{
                                  2, "[LoadJsonFromPath]Load OpenGLFilterConf Success: " + file}));
}

TEST(FilterCatalogue, ScansNothingBesideAnEmptyMainFile) {
    const TemporaryFolder folder;
    folder.Write(kMain, "[]");
    folder.Write("qor_effect/nle_default/x/f.conf", Entry("scanned"));
    EXPECT_THAT(Load(folder), IsEmpty());
}

TEST(FilterCatalogue, LosesOneFaultyEntryAlone) {
    AcquiredHost host;
    const TemporaryFolder folder;
    const std::string file = folder.Write(
        kMain, "[" + Listed("A") + "," + Entry("B", R"(, "DATAPATH": 5)") + "," +
                   Entry("C", R"(, "DATAPATH": "/c/", "NAME": 1)") + "," + Listed("D") + "]");
    EXPECT_THAT(Load(folder), ElementsAre("A", "D"));
    EXPECT_THAT(
        host.Texts(kLogError),
        ElementsAre(
            "kelmo: " + file + ": entry 1 \"B\" skipped: \"DATAPATH\" must be a text, not number",
            "kelmo: " + file + ": entry 2 \"C\" skipped: \"NAME\" must be a text, not number"));
}

TEST(FilterCatalogue, ScansTheFourFoldersInOrderWithoutAMainFile) {
    AcquiredHost host;
    const TemporaryFolder folder;
    folder.Write("qor_effect/Transition/t/f.conf", Entry("transition"));
    folder.Write("qor_effect/Transition/same/f.conf", Entry("same", R"(, "NAME": "late")"));
    folder.Write("qor_effect/plugin/Utility/u/f.conf", Entry("utility"));
    folder.Write("qor_effect/plugin/CommonFx/c/f.conf", Entry("common"));
    folder.Write("qor_effect/plugin/Other/o/f.conf", Entry("other"));
    folder.Write("qor_effect/nle_default/same/f.conf", Entry("same", R"(, "NAME": "early")"));
    FilterCatalogue catalogue;
    LoadCatalogueInto(catalogue, folder.Path());
    EXPECT_THAT(Guids(catalogue), ElementsAre("same", "common", "utility", "transition"));
    EXPECT_EQ(catalogue.FindFilter("same")->name, "early");
    EXPECT_THAT(host.Lines(),
                ElementsAre(LogLine{
                    4, "[LoadJsonFromPath]Open OpenGLFilterConf Failed: " + folder.Path(kMain)}));
}

TEST(FilterCatalogue, ScansTheFoldersWhenTheMainFileIsBroken) {
    for (const char* const text : {"", "[", "{}", "null", "[{\"GUID\": \"G\"]"}) {
        AcquiredHost host;
        const TemporaryFolder folder;
        const std::string file = folder.Write(kMain, text);
        folder.Write("qor_effect/Transition/t/f.conf", Entry("scanned"));
        EXPECT_THAT(Load(folder), ElementsAre("scanned")) << text;
        EXPECT_THAT(
            host.Lines(),
            ElementsAre(LogLine{4, "[LoadJsonFromPath]Read OpenGLFilterConf Failed: " + file}));
    }
}

TEST(FilterCatalogue, LoadsTenThousandEntriesInTheirOrder) {
    std::string text = "[";
    for (int i = 0; i < 10000; ++i) {
        text += (i == 0 ? "" : ",") + Listed(std::to_string(i));
    }
    const TemporaryFolder folder;
    folder.Write(kMain, text + "]");
    const std::vector<std::string> guids = Load(folder);
    ASSERT_EQ(guids.size(), 10000u);
    EXPECT_EQ(guids[9999], "9999");
    EXPECT_EQ(guids[1234], "1234");
}

TEST(FilterCatalogue, FillsTheOneOfTheProcess) {
    const TemporaryFolder folder;
    folder.Write(kMain, "[" + Listed("of the process") + "]");
    LoadCatalogue(folder.Path());
    EXPECT_NE(GetCatalogue().FindFilter("of the process"), nullptr);
}

}  // namespace
}  // namespace kelmo::test
