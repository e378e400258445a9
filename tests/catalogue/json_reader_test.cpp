// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/json_reader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <nlohmann/json.hpp>
#include <string>

#include "support/recording_host.h"
#include "support/temporary_folder.h"

namespace kelmo::test {
namespace {

using nlohmann::json;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using Groups = std::vector<std::vector<std::string>>;

json Minimal() {
    return {{"GUID", "G"}, {"OPENGL", "a.b.frag"}};
}

json With(const char* key, json value) {
    json object = Minimal();
    object[key] = std::move(value);
    return object;
}

std::shared_ptr<NLEFilterInfo> Read(const json& object) {
    return ReadFilterJson(object, "/d/");
}

// The only parameter of a description.
std::shared_ptr<NLEFilterParams> ReadParam(json param) {
    const auto info = Read(With("PARAMS", json::array({std::move(param)})));
    return info == nullptr ? nullptr : info->GetParam(0);
}

TEST(JsonReader, ReadsEveryKey) {
    const json object = {
        {"GUID", "G1"},
        {"OPENGL", "f.frag"},
        {"OPENCL", "f.cl"},
        {"OPENGL_VERTEX", "v.vert"},
        {"AUDIO", false},
        {"ENCRYPT", "1"},
        {"NAME", "Name"},
        {"DYNAMIC", "2"},
        {"OPENGL_EXTERN", "{a,b}{c}"},
        {"OPENGL_VERTEX_EXTERN", "{d}"},
        {"BLANKFRAMERENDER", "3"},
        {"OPENGL_TYPE", "Type"},
        {"SUB_GUID", "Sub"},
        {"TRANSITION", nullptr},
        {"FUNCTION", 4},
        {"INNERROI", 5},
        {"IGNOREDEF", 6},
        {"DATAPATH", 7},  // not this reader's
    };
    const auto info = Read(object);
    ASSERT_NE(info, nullptr);
    EXPECT_EQ(info->guid, "G1");
    EXPECT_EQ(info->openglPath, "/d/f.frag");
    EXPECT_EQ(info->openclPath, "/d/f.cl");
    EXPECT_EQ(info->vertexPath, "/d/v.vert");
    EXPECT_EQ(info->name, "Name");
    EXPECT_EQ(info->typeName, "Type");
    EXPECT_EQ(info->subGuid, "Sub");
    EXPECT_EQ(info->dataPath, "/d/");
    EXPECT_EQ(info->entry, "MAIN");
    EXPECT_STREQ(info->textureKeyPrefix, "Texture[");
    EXPECT_EQ(info->fragmentExterns, (Groups{{"/d/a", "/d/b"}, {"/d/c"}}));
    EXPECT_EQ(info->vertexExterns, (Groups{{"/d/d"}}));
    EXPECT_THAT((std::vector<int32_t>{info->hasOpengl, info->hasOpencl, info->hasVertex,
                                      info->hasAudio, info->transition}),
                ElementsAre(1, 1, 1, 1, 1));
    EXPECT_THAT((std::vector<int32_t>{info->encrypt, info->dynamic, info->blankFrameRender,
                                      info->function, info->innerRoi, info->ignoreDefault}),
                ElementsAre(1, 2, 3, 4, 5, 6));
}

TEST(JsonReader, LeavesTheDefaultOfEveryMissingKey) {
    const auto info = Read(Minimal());
    ASSERT_NE(info, nullptr);
    EXPECT_EQ(info->openclPath, "");
    EXPECT_EQ(info->vertexPath, "");
    EXPECT_EQ(info->typeName, "");
    EXPECT_EQ(info->subGuid, "");
    EXPECT_THAT(info->fragmentExterns, IsEmpty());
    EXPECT_THAT((std::vector<int32_t>{info->hasOpencl, info->hasVertex, info->hasAudio,
                                      info->transition, info->encrypt, info->dynamic,
                                      info->blankFrameRender, info->function, info->innerRoi,
                                      info->ignoreDefault, info->textureCount, info->paramCount}),
                testing::Each(0));
}

TEST(JsonReader, MakesNoDescriptionWithoutGuidOrShaderAndSaysNothing) {
    AcquiredHost host;
    for (const char* const text :
         {R"({"OPENGL": "a"})", R"({"GUID": "G"})", R"({"GUID": "G", "OPENCL": "a"})",
          R"({"guid": "G", "opengl": "a"})", "{}", "[]", "null", "3", R"("GUID")"}) {
        EXPECT_EQ(Read(json::parse(text)), nullptr) << text;
    }
    EXPECT_THAT(host.Lines(), IsEmpty());
}

TEST(JsonReader, NamesAFilterAfterItsShaderUpToTheLastDot) {
    struct Case {
        const char* opengl;
        const char* name;
    };
    constexpr Case kCases[] = {{"a.b.frag", "a.b"}, {"plain", "plain"}, {".frag", ""}, {"", ""}};
    for (const Case& c : kCases) {
        const auto info = Read({{"GUID", "G"}, {"OPENGL", c.opengl}});
        ASSERT_NE(info, nullptr);
        EXPECT_EQ(info->name, c.name);
    }
    EXPECT_EQ(Read(With("NAME", ""))->name, "");
}

TEST(JsonReader, ReadsDecimalTexts) {
    struct Case {
        const char* text;
        int32_t number;
    };
    constexpr Case kCases[] = {
        {"1", 1},   {"010", 10},   {"-5", -5},
        {" 7", 7},  {"12abc", 12}, {"0x10", 0},
        {"abc", 0}, {"", 0},       {"99999999999", std::numeric_limits<int32_t>::max()}};
    for (const Case& c : kCases) {
        EXPECT_EQ(Read(With("ENCRYPT", c.text))->encrypt, c.number) << c.text;
    }
}

TEST(JsonReader, ReadsGroupLists) {
    struct Case {
        const char* text;
        Groups groups;
    };
    const Case kCases[] = {
        {"{a}", {{"/d/a"}}},
        {"{a,b}{c,d}", {{"/d/a", "/d/b"}, {"/d/c", "/d/d"}}},
        {"{a},{b}", {{"/d/a"}, {"/d/b"}}},
        {"{ a , b }\n{c}", {{"/d/a", "/d/b"}, {"/d/c"}}},
        {"{{a}", {{"/d/a"}}},
        {"{a}}rest", {{"/d/a"}}},
        {"{a", {{"/d/a"}}},
        {"{a{b", {{"/d/a"}, {"/d/b"}}},
        {"a,b", {{"/d/a", "/d/b"}}},
        {"a{b}", {{"/d/a"}, {"/d/b"}}},
        {"{a,}{,b}", {{"/d/a"}, {"/d/b"}}},
        {"{}{a}", {{}, {"/d/a"}}},
        {"{", {}},
        {"}", {{}}},
        {",", {}},
        {"", {}},
    };
    for (const Case& c : kCases) {
        EXPECT_EQ(ReadGroupList(c.text, "/d/"), c.groups) << c.text;
    }
}

TEST(JsonReader, ReadsTextureSlots) {
    const auto info = Read(With("TEXTURES", json::parse(R"([
        {"TYPE": "image", "FILE": "a.png"}, {}, null, [],
        {"TYPE": "video", "FILE": "b.mp4"}, {"TYPE": "Image", "FILE": "c[3].png"},
        {"TYPE": "", "FILE": "d.png"}])")));
    ASSERT_NE(info, nullptr);
    EXPECT_EQ(info->textureCount, 4);
    EXPECT_EQ(info->GetTexture(0), "/d/a.png");
    EXPECT_EQ(info->GetTexture(1), "video|/d/b.mp4");
    EXPECT_EQ(info->GetTexture(2), "Image|/d/c[3].png");
    EXPECT_EQ(info->GetTexture(3), "|/d/d.png");
}

TEST(JsonReader, ReadsParametersOfEachType) {
    const auto single = ReadParam({{"NAME", "n"},
                                   {"TYPE", "float"},
                                   {"UIType", "Mult100"},
                                   {"MIN", -1},
                                   {"MAX", 2.5},
                                   {"DEFAULT", 0.1}});
    ASSERT_NE(single, nullptr);
    EXPECT_EQ(single->name, "n");
    EXPECT_EQ(single->alias, "n");
    EXPECT_EQ(single->type, 3);
    EXPECT_EQ(single->uiType, 25);
    EXPECT_EQ(single->minValue.AsFloat(), -1.0f);
    EXPECT_EQ(single->maxValue.AsFloat(), 2.5f);
    EXPECT_EQ(single->defaultValue.AsFloat(), 0.1f);
    EXPECT_EQ(single->value.AsFloat(), 0.1f);

    const auto twice = ReadParam({{"TYPE", "double"}, {"MAX", 7}, {"DEFAULT", 0.1}});
    EXPECT_EQ(twice->type, 2);
    EXPECT_EQ(twice->name, "");
    EXPECT_EQ(twice->minValue.AsDouble(), 0.0);
    EXPECT_EQ(twice->maxValue.AsDouble(), 7.0);
    EXPECT_EQ(twice->value.AsDouble(), 0.1);

    for (const char* const type : {"int", "point"}) {
        const auto whole = ReadParam({{"TYPE", type}, {"MIN", -3.9}, {"DEFAULT", 0xff112233u}});
        EXPECT_EQ(whole->type, 5);
        EXPECT_EQ(whole->minValue.AsInt(), -3);
        EXPECT_EQ(whole->maxValue.AsInt(), 0);
        EXPECT_EQ(whole->value.AsInt(), static_cast<int32_t>(0xff112233u));
    }

    const auto text = ReadParam({{"NAME", "n"},
                                 {"ALIAS", "Shown"},
                                 {"TYPE", "string"},
                                 {"MIN", 1},
                                 {"MAX", 2},
                                 {"DEFAULT", "file:/x"}});
    EXPECT_EQ(text->alias, "Shown");
    EXPECT_EQ(text->type, 6);
    EXPECT_STREQ(text->minValue.AsText(), "file:/x");
    EXPECT_STREQ(text->maxValue.AsText(), "file:/x");
    EXPECT_STREQ(text->defaultValue.AsText(), "file:/x");
    EXPECT_STREQ(text->value.AsText(), "x");

    const auto pointer = ReadParam({{"TYPE", "pointer"}, {"DEFAULT", 5}, {"UIType", "color"}});
    EXPECT_EQ(pointer->type, 7);
    EXPECT_EQ(pointer->uiType, 0);
    EXPECT_EQ(pointer->value.AsPointer(), nullptr);
}

TEST(JsonReader, ClampsNumbersThatTheTypeCannotHold) {
    const auto single = ReadParam({{"TYPE", "float"}, {"MIN", -1e300}, {"MAX", 1e300}});
    EXPECT_EQ(single->minValue.AsFloat(), std::numeric_limits<float>::lowest());
    EXPECT_EQ(single->maxValue.AsFloat(), std::numeric_limits<float>::max());
    const auto whole = ReadParam({{"TYPE", "int"}, {"MIN", -1e300}, {"MAX", 1e300}});
    EXPECT_EQ(whole->minValue.AsInt(), std::numeric_limits<int32_t>::min());
    EXPECT_EQ(whole->maxValue.AsInt(), std::numeric_limits<int32_t>::max());
}

TEST(JsonReader, GivesTheIndexOfADroppedParameterToTheNext) {
    AcquiredHost host;
    const std::string longest(37, 'n');
    const auto info = Read(With("PARAMS", json::array({{{"NAME", "a"}, {"TYPE", "vector"}},
                                                       {{"NAME", "b"}, {"TYPE", "float"}},
                                                       {{"NAME", "c"}},
                                                       json::object(),
                                                       {{"NAME", longest + "n"}, {"TYPE", "int"}},
                                                       {{"NAME", longest}, {"TYPE", "int"}}})));
    ASSERT_NE(info, nullptr);
    ASSERT_EQ(info->paramCount, 2);
    EXPECT_EQ(info->GetParam(0)->name, "b");
    EXPECT_EQ(info->GetParam(1)->name, longest);
    EXPECT_EQ(info->GetParam(2), nullptr);
    EXPECT_THAT(host.Lines(),
                ElementsAre(testing::Field(&LogLine::level, static_cast<int32_t>(kLogWarning))));
    EXPECT_THAT(host.Lines()[0].text, AllOf(HasSubstr("\"G\""), HasSubstr(longest + "n")));
}

TEST(JsonReader, SkipsAnEntryWithAValueOfTheWrongType) {
    struct Case {
        const char* key;
        std::vector<json> wrong;
    };
    const std::vector<json> noText = {
        1, true, nullptr, json::array(), json::object(), std::string("a\0b", 3)};
    const std::vector<json> noNumber = {"1", true, nullptr, json::array()};
    const std::vector<json> noArray = {1, "a", nullptr, json::object()};
    const Case kCases[] = {
        {"GUID", noText},
        {"OPENGL", noText},
        {"OPENCL", noText},
        {"OPENGL_VERTEX", noText},
        {"ENCRYPT", noText},
        {"NAME", noText},
        {"DYNAMIC", noText},
        {"OPENGL_EXTERN", noText},
        {"OPENGL_VERTEX_EXTERN", noText},
        {"BLANKFRAMERENDER", noText},
        {"OPENGL_TYPE", noText},
        {"SUB_GUID", noText},
        {"FUNCTION", noNumber},
        {"INNERROI", noNumber},
        {"IGNOREDEF", noNumber},
        {"TEXTURES", noArray},
        {"PARAMS", noArray},
    };
    AcquiredHost host;
    for (const Case& c : kCases) {
        for (const json& value : c.wrong) {
            host.ClearLines();
            EXPECT_EQ(ReadFilterJson(With(c.key, value), "/d/", {"some.conf", 12}), nullptr)
                << c.key << " " << value;
            const std::vector<std::string> lines = host.Texts(kLogError);
            ASSERT_EQ(lines.size(), 1u) << c.key << " " << value;
            EXPECT_THAT(lines[0], AllOf(HasSubstr("some.conf"), HasSubstr("entry 12"),
                                        HasSubstr(std::string("\"") + c.key + "\"")));
        }
    }
}

TEST(JsonReader, SkipsAnEntryWithAFaultInsideItsArrays) {
    struct Case {
        const char* key;
        const char* element;
        std::vector<const char*> told;
    };
    const Case kCases[] = {
        {"TEXTURES", R"("a.png")", {"TEXTURES[1]", "object"}},
        {"TEXTURES", R"({"TYPE": "image"})", {"TEXTURES[1]", "no \"FILE\""}},
        {"TEXTURES", R"({"FILE": "a.png"})", {"TEXTURES[1]", "no \"TYPE\""}},
        {"TEXTURES", R"({"TYPE": 1, "FILE": "a.png"})", {"TEXTURES[1]", "\"TYPE\""}},
        {"TEXTURES", R"({"TYPE": "image", "FILE": 1})", {"TEXTURES[1]", "\"FILE\""}},
        {"PARAMS", "[1]", {"PARAMS[1]", "object"}},
        {"PARAMS", R"({"TYPE": 3})", {"PARAMS[1]", "\"TYPE\""}},
        {"PARAMS", R"({"TYPE": "float", "NAME": 1})", {"PARAMS[1]", "\"NAME\""}},
        {"PARAMS", R"({"TYPE": "float", "ALIAS": null})", {"PARAMS[1]", "\"ALIAS\""}},
        {"PARAMS", R"({"TYPE": "float", "UIType": 1})", {"PARAMS[1]", "\"UIType\""}},
        {"PARAMS", R"({"TYPE": "float", "MIN": "0"})", {"PARAMS[1]", "\"MIN\""}},
        {"PARAMS", R"({"TYPE": "double", "MAX": "1"})", {"PARAMS[1]", "\"MAX\""}},
        {"PARAMS", R"({"TYPE": "int", "DEFAULT": true})", {"PARAMS[1]", "\"DEFAULT\""}},
        {"PARAMS", R"({"TYPE": "point", "DEFAULT": null})", {"PARAMS[1]", "\"DEFAULT\""}},
        {"PARAMS", R"({"TYPE": "string", "DEFAULT": 1})", {"PARAMS[1]", "\"DEFAULT\""}},
    };
    AcquiredHost host;
    for (const Case& c : kCases) {
        host.ClearLines();
        json elements = json::array();
        elements.push_back(nullptr);
        elements.push_back(json::parse(c.element));
        EXPECT_EQ(Read(With(c.key, elements)), nullptr) << c.element;
        const std::vector<std::string> lines = host.Texts(kLogError);
        ASSERT_EQ(lines.size(), 1u) << c.element;
        for (const char* const told : c.told) {
            EXPECT_THAT(lines[0], HasSubstr(told));
        }
    }
}

TEST(JsonReader, RefusesTextsThatFitNoBuffer) {
    struct Case {
        const char* key;
        // A value of so many bytes, "/d/" of the path included.
        std::function<json(std::size_t)> make;
        std::size_t longest;
    };
    const auto path = [](std::size_t size) { return json(std::string(size - 3, 'x')); };
    const auto group = [](std::size_t size) {
        return json("{" + std::string(size - 3, 'x') + "}");
    };
    const Case kCases[] = {
        {"GUID", [](std::size_t size) { return json(std::string(size, 'x')); }, 127},
        {"OPENGL", path, 4095},
        {"OPENCL", path, 4095},
        {"OPENGL_VERTEX", path, 4095},
        {"OPENGL_EXTERN", group, 4095},
        {"OPENGL_VERTEX_EXTERN", group, 4095},
        {"TEXTURES",
         [&](std::size_t size) {
             return json::array({{{"TYPE", "image"}, {"FILE", path(size)}}});
         },
         4095},
        {"TEXTURES",
         [&](std::size_t size) {
             return json::array({{{"TYPE", "video"}, {"FILE", path(size - 6)}}});
         },
         4095},
    };
    AcquiredHost host;
    for (const Case& c : kCases) {
        host.ClearLines();
        EXPECT_NE(Read(With(c.key, c.make(c.longest))), nullptr) << c.key;
        EXPECT_THAT(host.Texts(kLogError), IsEmpty());
        EXPECT_EQ(Read(With(c.key, c.make(c.longest + 1))), nullptr) << c.key;
        EXPECT_EQ(host.Texts(kLogError).size(), 1u) << c.key;
    }
    EXPECT_EQ(ReadFilterJson(Minimal(), std::string(4096, 'd')), nullptr);
}

TEST(JsonReader, CutsALongNameBetweenCharacters) {
    AcquiredHost host;
    const std::string name = std::string(126, 'n') + "\u00e9";
    EXPECT_EQ(Read(With("NAME", name))->name, std::string(126, 'n'));
    EXPECT_EQ(host.Texts(kLogWarning).size(), 1u);
    EXPECT_EQ(Read(With("NAME", std::string(125, 'n') + "\u00e9"))->name.size(), 127u);
    EXPECT_EQ(host.Texts(kLogWarning).size(), 1u);
}

TEST(JsonReader, ParsesOnlyWhatIsWellFormedAndReasonablyNested) {
    const auto nested = [](int levels) {
        return std::string(levels, '[') + std::string(levels, ']');
    };
    json value;
    EXPECT_TRUE(ParseJson(nested(64), value));
    EXPECT_TRUE(ParseJson("[\"" + std::string(1000, '[') + "\\\"[\"]", value));
    EXPECT_TRUE(ParseJson("\xef\xbb\xbf{}", value));
    for (const std::string& broken :
         {nested(65), std::string(10000000, '['), std::string(), std::string("{"),
          std::string("[1,]"), std::string("{}x"), std::string("[\"\xff\"]"),
          std::string("[1e999]"), std::string("\""), std::string("\"\\")}) {
        value = 1;
        EXPECT_FALSE(ParseJson(broken, value)) << broken.substr(0, 80);
        EXPECT_TRUE(value.is_null());
    }
}

TEST(JsonReader, ANumberBeyondAllRangeCostsItsEntryAlone) {
    AcquiredHost host;
    const TemporaryFolder folder;
    folder.Write("qor_effect/material/OpenGLFilter.conf",
                 "[{\"NAME\": \"\\\"1e999\"},\n {\"FUNCTION\": -1e999}, {\"FUNCTION\": 2}]");
    json entries;
    ASSERT_TRUE(LoadJsonFromPath(folder.Path(), entries));
    ASSERT_EQ(entries.size(), 3u);
    EXPECT_EQ(entries[0]["NAME"], "\"1e999");
    EXPECT_TRUE(entries[1]["FUNCTION"].is_array());
    EXPECT_EQ(entries[2]["FUNCTION"], 2);
    ASSERT_EQ(host.Texts(kLogError).size(), 1u);
    EXPECT_THAT(host.Texts(kLogError)[0], testing::HasSubstr("line 2, column 15: "));
}

TEST(JsonReader, ReadsAFilterOfItsOwnFile) {
    AcquiredHost host;
    const TemporaryFolder folder;
    const std::string file =
        folder.Write("\u7d20\u6750/own.conf", R"({"GUID": "G", "OPENGL": "f.frag"})");
    const auto info = GetFilterInfoFromJson(file);
    ASSERT_NE(info, nullptr);
    EXPECT_EQ(info->dataPath, folder.Path("\u7d20\u6750/"));
    EXPECT_EQ(info->openglPath, folder.Path("\u7d20\u6750/f.frag"));

    for (const char* const text : {"", "{", "[]", "[{\"GUID\": \"G\", \"OPENGL\": \"f\"}]"}) {
        EXPECT_EQ(GetFilterInfoFromJson(folder.Write("broken.conf", text)), nullptr) << text;
    }
    EXPECT_EQ(GetFilterInfoFromJson(folder.Path("missing.conf")), nullptr);
    EXPECT_EQ(GetFilterInfoFromJson(folder.Path()), nullptr);
    EXPECT_THAT(host.Lines(), IsEmpty());

    const std::string wrong = folder.Write("wrong.conf", R"({"GUID": "G", "OPENGL": 1})");
    EXPECT_EQ(GetFilterInfoFromJson(wrong), nullptr);
    EXPECT_THAT(host.Texts(kLogError),
                ElementsAre("kelmo: " + wrong +
                            ": entry \"G\" skipped: \"OPENGL\" must be a text, not number"));
}

}  // namespace
}  // namespace kelmo::test
