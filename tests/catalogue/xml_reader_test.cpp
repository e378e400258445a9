// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/xml_reader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "support/recording_host.h"
#include "support/temporary_folder.h"

namespace kelmo::test {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;

std::shared_ptr<NLEFilterInfo> Read(const std::string& body) {
    return ReadFilterXml(
        "<?xml version=\"1.0\"?><Filter><GUID>G</GUID><Name>N</Name>" + body + "</Filter>", "/d/",
        "filter.xml");
}

TEST(XmlReader, ReadsAStickerPackage) {
    const auto info = Read(
        "<SensetimeSticker><SensetimeStickerFile>s.zip</SensetimeStickerFile>"
        "</SensetimeSticker>");
    ASSERT_NE(info, nullptr);
    EXPECT_EQ(info->guid, "G");
    EXPECT_EQ(info->name, "N");
    EXPECT_EQ(info->transition, 1);
    EXPECT_EQ(info->hasOpengl, 0);
    EXPECT_EQ(info->dataPath, "");
    ASSERT_EQ(info->paramCount, 1);
    const auto param = info->GetParam(0);
    ASSERT_NE(param, nullptr);
    EXPECT_EQ(param->alias, "stickerPath");
    EXPECT_EQ(param->name, "");
    EXPECT_EQ(param->type, kParamText);
    EXPECT_STREQ(param->value.AsText(), "/d/s.zip");
}

TEST(XmlReader, ReadsAnAstralPicture) {
    const auto info = Read("<Astral><AstralFile>star.png</AstralFile></Astral>");
    ASSERT_NE(info, nullptr);
    EXPECT_EQ(info->subGuid, "Astral");
    EXPECT_EQ(info->GetTexture(0), "/d/star.png");
    EXPECT_EQ(info->textureCount, 0);
    EXPECT_EQ(info->paramCount, 0);
    EXPECT_EQ(info->transition, 0);
}

TEST(XmlReader, LeavesOutWhatIsMissing) {
    const auto astral = Read("<Astral/>");
    EXPECT_EQ(astral->subGuid, "Astral");
    EXPECT_THAT(astral->textures, IsEmpty());

    for (const char* const body :
         {"", "<SensetimeSticker/>", "<SensetimeSticker><SensetimeStickerFile/></SensetimeSticker>",
          "<SensetimeStickerFile>s.zip</SensetimeStickerFile>"}) {
        const auto info = Read(body);
        ASSERT_NE(info, nullptr) << body;
        EXPECT_EQ(info->guid, "G");
        EXPECT_EQ(info->transition, 0) << body;
        EXPECT_EQ(info->paramCount, 0) << body;
    }
}

TEST(XmlReader, GivesAnEmptyDescriptionWithoutItsRoot) {
    for (const char* const text : {"<Other><GUID>G</GUID></Other>", "<A><Filter/></A>"}) {
        const auto info = ReadFilterXml(text, "/d/", "filter.xml");
        ASSERT_NE(info, nullptr) << text;
        EXPECT_EQ(info->guid, "");
        EXPECT_EQ(info->name, "");
        EXPECT_EQ(info->subGuid, "");
    }
}

TEST(XmlReader, ReadsNothingFromBrokenText) {
    std::string deep;
    for (int i = 0; i < 100000; ++i) {
        deep += "<a>";
    }
    for (const std::string& text : {std::string(), std::string("<Filter>"), std::string("text"),
                                    std::string("<Filter><GUID></Filter>"), deep}) {
        EXPECT_EQ(ReadFilterXml(text, "/d/", "filter.xml"), nullptr) << text.substr(0, 50);
    }
}

TEST(XmlReader, RefusesTextsThatFitNoBuffer) {
    struct Case {
        std::string opening;
        std::string closing;
        // Bytes of the text itself, without "/d/".
        std::size_t longest;
    };
    const Case kCases[] = {
        {"<Astral><AstralFile>", "</AstralFile></Astral>", 4092},
        {"<SensetimeSticker><SensetimeStickerFile>", "</SensetimeStickerFile></SensetimeSticker>",
         508},
    };
    AcquiredHost host;
    for (const Case& c : kCases) {
        host.ClearLines();
        EXPECT_NE(Read(c.opening + std::string(c.longest, 'x') + c.closing), nullptr);
        EXPECT_THAT(host.Lines(), IsEmpty());
        EXPECT_EQ(Read(c.opening + std::string(c.longest + 1, 'x') + c.closing), nullptr);
        ASSERT_EQ(host.Texts(kLogError).size(), 1u);
        EXPECT_THAT(host.Texts(kLogError)[0], HasSubstr("filter.xml: entry \"G\""));
    }
    const std::string guid(128, 'g');
    EXPECT_EQ(ReadFilterXml("<Filter><GUID>" + guid + "</GUID></Filter>", "/d/", "x"), nullptr);
}

TEST(XmlReader, TakesTheFolderFromTheFile) {
    const TemporaryFolder folder;
    const std::string file = folder.Write(
        "\u661f/filter.xml", "<Filter><Astral><AstralFile>a.png</AstralFile></Astral></Filter>");
    const auto info = GetFilterInfoFromXml(file);
    ASSERT_NE(info, nullptr);
    EXPECT_EQ(info->GetTexture(0), folder.Path("\u661f/a.png"));
    EXPECT_EQ(GetFilterInfoFromXml(folder.Path("missing.xml")), nullptr);
}

}  // namespace
}  // namespace kelmo::test
