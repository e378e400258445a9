// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/pass_reader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "catalogue/json_fields.h"

namespace kelmo::test {
namespace {

using nlohmann::json;
using testing::ElementsAre;
using testing::HasSubstr;

constexpr PassInput kClip{PassInput::kClip, 0, false};

PassInput Pass(std::size_t index, bool before = false) {
    return {PassInput::kPass, index, before};
}

TEST(PassReader, ReadsNamesSizesAndWhatEachPassReads) {
    const json object = json::parse(R"({"READS": ["clip", "b", "output@before"], "PASSES": [
        {"NAME": "a", "OPENGL": "a.frag", "SCALE": 0.25, "NEEDS": "amount"},
        {"NAME": "b", "OPENGL": "b.frag", "HEIGHT": 90},
        {"NAME": "c", "OPENGL": "c.frag", "READS": ["second", "a", "c@before"], "NEEDS": ["x", "y"]}]})");
    std::vector<PassInput> own;
    const auto passes = ReadPasses(object, "/d/", true, own);
    ASSERT_EQ(passes.size(), 3U);
    EXPECT_EQ(passes[0].fragmentPath, "/d/a.frag");
    EXPECT_EQ(passes[0].scale, 0.25);
    EXPECT_THAT(passes[0].reads, ElementsAre(kClip));
    EXPECT_THAT(passes[0].needs, ElementsAre("amount"));
    EXPECT_EQ(passes[1].height, 90);
    EXPECT_THAT(passes[1].reads, ElementsAre(Pass(0)));
    EXPECT_THAT(passes[2].reads,
                ElementsAre(PassInput{PassInput::kSecondClip, 0, false}, Pass(0), Pass(2, true)));
    EXPECT_THAT(passes[2].needs, ElementsAre("x", "y"));
    EXPECT_THAT(own, ElementsAre(kClip, Pass(1), Pass(3, true)));
    ReadPasses(json::parse(R"({"PASSES": [{"NAME": "a", "OPENGL": "a.frag"}]})"), "", false, own);
    EXPECT_THAT(own, ElementsAre(kClip, Pass(0))) << "without a word: the clip and the last pass";
}

TEST(PassReader, NamesThePassAndTheFault) {
    const std::pair<const char*, const char*> cases[] = {
        {R"({})", "array of passes"},
        {R"([])", "array of passes"},
        {R"([7])", "pass 0 has no \"NAME\""},
        {R"([{"NAME": "clip", "OPENGL": "f"}])", "\"clip\": the name is taken"},
        {R"([{"NAME": "a@b", "OPENGL": "f"}])", "the name is taken"},
        {R"([{"NAME": "a", "OPENGL": "f"}, {"NAME": "a", "OPENGL": "f"}])", "taken"},
        {R"([{"NAME": "a"}])", "pass \"a\": no \"OPENGL\""},
        {R"([{"NAME": "a", "OPENGL": "f", "SCALE": 0}])", "SCALE"},
        {R"([{"NAME": "a", "OPENGL": "f", "HEIGHT": -1}])", "HEIGHT"},
        {R"([{"NAME": "a", "OPENGL": "f", "READS": []}])", "1 to 8"},
        {R"([{"NAME": "a", "OPENGL": "f", "READS": 3}])", "texts"},
        {R"([{"NAME": "a", "OPENGL": "f", "READS": ["second"]}])", "which is no pass"},
        {R"([{"NAME": "a", "OPENGL": "f", "READS": ["clip@before"]}])", "of passes are kept"},
        {R"([{"NAME": "a", "OPENGL": "f", "READS": ["a"]}])", "drawn later"},
    };
    for (const auto& [passes, fault] : cases) {
        SCOPED_TRACE(passes);
        const json value = json::parse(passes);
        std::vector<PassInput> own;
        try {
            ReadPasses({{"PASSES", value}}, "", false, own);
            FAIL() << "read";
        } catch (const DescriptionError& error) {
            EXPECT_THAT(error.what(), HasSubstr(fault));
        }
    }
}

}  // namespace
}  // namespace kelmo::test
