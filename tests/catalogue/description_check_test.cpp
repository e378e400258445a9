// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/description_check.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "catalogue/texture_path.h"
#include "support/temporary_folder.h"

namespace kelmo::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

class DescriptionCheckTest : public testing::Test {
protected:
    DescriptionCheckTest() {
        folder.Write("f.frag", "");
        folder.Write("a.png", "");
        folder.Write("s0000.png", "");
        folder.Write("s0001.png", "");
        info.guid = "508D116E-422F-4360-843A-034765A6b39b";
        info.name = "Name";
        info.dataPath = folder.Path() + "/";
        info.openglPath = folder.Path("f.frag");
        info.hasOpengl = 1;
    }

    std::shared_ptr<NLEFilterParams> AddParam(const char* name, int32_t type) {
        auto param = std::make_shared<NLEFilterParams>();
        param->name = name;
        param->type = type;
        info.AddParam(info.paramCount++, param);
        return param;
    }

    void AddTexture(const std::string& text) { info.AddTexture(info.textureCount++, text); }

    TemporaryFolder folder;
    NLEFilterInfo info;
};

TEST_F(DescriptionCheckTest, FindsNothingWrongWithASoundDescription) {
    info.vertexPath = folder.Path("f.frag");
    info.hasVertex = 1;
    info.fragmentExterns = {{folder.Path("f.frag")}};
    AddTexture(folder.Path("a.png"));
    AddTexture(folder.Path("s[2].png"));
    const auto param = AddParam("uStrength", kParamFloat);
    param->maxValue = NLEParamValue::Float(1);
    param->defaultValue = NLEParamValue::Float(1);
    const auto color = AddParam("uColor", kParamInt);  // with alpha, hence negative
    color->uiType = kUiColor;
    color->maxValue = NLEParamValue::Int(-1);
    color->defaultValue = NLEParamValue::Int(-65536);
    AddParam("picture", kParamText);
    AddParam("filter", kParamFloat);  // declared as filter_
    EXPECT_THAT(CheckDescription(info), IsEmpty());
}

TEST_F(DescriptionCheckTest, NamesEachFault) {
    struct Case {
        const char* key;
        std::string told;
        std::function<void()> spoil;
    };
    const std::string missing = folder.Path("missing");
    const Case kCases[] = {
        {"GUID", "missing", [&] { info.guid = ""; }},
        {"GUID", "8-4-4-4-12", [&] { info.guid = "{508D}"; }},
        {"NAME", "missing", [&] { info.name = ""; }},
        {"OPENGL", "missing", [&] { info.hasOpengl = 0; }},
        {"OPENGL", missing, [&] { info.openglPath = missing; }},
        {"OPENGL", folder.Path(), [&] { info.openglPath = folder.Path(); }},
        {"OPENGL_VERTEX", missing, [&] { info.hasVertex = 1, info.vertexPath = missing; }},
        {"OPENCL", missing, [&] { info.hasOpencl = 1, info.openclPath = missing; }},
        {"OPENGL_EXTERN[1]", missing,
         [&] {
             info.fragmentExterns = {{info.openglPath}, {missing}};
         }},
        {"OPENGL_VERTEX_EXTERN[0]", missing, [&] { info.vertexExterns = {{missing}}; }},
        {"OPENGL_EXTERN[0]", "without files", [&] { info.fragmentExterns = {{}}; }},
        {"TEXTURES[0]", missing, [&] { AddTexture(missing); }},
        {"TEXTURES[0]", "TYPE is video", [&] { AddTexture("video|" + folder.Path("a.png")); }},
        {"TEXTURES[0]", "s0002.png", [&] { AddTexture(folder.Path("s[100].png")); }},
        {"TEXTURES[0]", "without files", [&] { AddTexture(folder.Path("s[0].png")); }},
        {"PARAMS[0]", "no NAME", [&] { AddParam("", kParamInt); }},
        {"PARAMS[0]", "float", [&] { AddParam("float", kParamInt); }},
        {"PARAMS[0]", "2nd", [&] { AddParam("2nd", kParamInt); }},
        {"PARAMS[1]", "twice", [&] { AddParam("a", kParamInt), AddParam("a", kParamText); }},
        {"PARAMS[0]", "missing", [&] { AddParam("a", kParamInt), info.AddParam(0, nullptr); }},
    };
    for (const Case& c : kCases) {
        info.guid = "508D116E-422F-4360-843A-034765A6B39B";
        info.name = "Name";
        info.openglPath = folder.Path("f.frag");
        info.hasOpengl = 1;
        info.hasVertex = info.hasOpencl = info.textureCount = info.paramCount = 0;
        info.fragmentExterns.clear();
        info.vertexExterns.clear();
        ASSERT_THAT(CheckDescription(info), IsEmpty());
        c.spoil();
        const std::vector<DescriptionProblem> problems = CheckDescription(info);
        ASSERT_THAT(problems, SizeIs(1)) << c.key << " " << c.told;
        EXPECT_EQ(problems[0].key, c.key);
        EXPECT_THAT(problems[0].message, HasSubstr(c.told));
    }
}

TEST_F(DescriptionCheckTest, WantsTheDefaultWithinTheLimits) {
    struct Case {
        double minimum;
        double value;
        double maximum;
        bool sound;
    };
    constexpr Case kCases[] = {{0, 0, 1, true},  {0, 1, 1, true},   {2, 2, 2, true},
                               {0, 2, 1, false}, {0, -1, 1, false}, {1, 1, 0, false},
                               {1, 0, 0, false}};
    struct Type {
        int32_t type;
        std::function<NLEParamValue(double)> value;
    };
    const Type kTypes[] = {
        {kParamFloat, [](double v) { return NLEParamValue::Float(static_cast<float>(v)); }},
        {kParamDouble, NLEParamValue::Double},
        {kParamInt, [](double v) { return NLEParamValue::Int(static_cast<int32_t>(v)); }},
    };
    for (const Type& type : kTypes) {
        const auto param = AddParam(("u" + std::to_string(type.type)).c_str(), type.type);
        for (const Case& c : kCases) {
            param->minValue = type.value(c.minimum);
            param->defaultValue = type.value(c.value);
            param->maxValue = type.value(c.maximum);
            EXPECT_EQ(CheckDescription(info).empty(), c.sound)
                << "type " << type.type << ": " << c.minimum << " <= " << c.value
                << " <= " << c.maximum;
        }
        param->minValue = param->defaultValue = param->maxValue = type.value(0);
    }
}

TEST(DescriptionForms, KnowAGuid) {
    EXPECT_TRUE(IsGuid("508D116E-422F-4360-843A-034765A6B39B"));
    EXPECT_TRUE(IsGuid("508d116e-422f-4360-843a-034765a6b39b"));
    for (const char* const text :
         {"", "508D116E-422F-4360-843A-034765A6B39", "508D116E-422F-4360-843A-034765A6B39BB",
          "{508D116E-422F-4360-843A-034765A6B39B}", "508D116E0422F-4360-843A-034765A6B39B",
          "508D116G-422F-4360-843A-034765A6B39B"}) {
        EXPECT_FALSE(IsGuid(text)) << text;
    }
}

TEST(DescriptionForms, KnowWhatAShaderCanDeclare) {
    for (const char* const text : {"u", "uViewSizeWidth", "_x1", "Filter", "glow"}) {
        EXPECT_TRUE(IsGlslIdentifier(text)) << text;
    }
    for (const char* const text : {"", "1a", "a-b", "a b", "a[0]", "\u00e9", "gl_x", "a__b",
                                   "filter", "sampler2D", "while", "active"}) {
        EXPECT_FALSE(IsGlslIdentifier(text)) << text;
    }
}

TEST(DescriptionForms, PutAnUnderscoreBehindReservedWords) {
    EXPECT_EQ(UniformName("filter"), "filter_");
    EXPECT_EQ(UniformName("filters"), "filters");
    EXPECT_EQ(UniformName("float"), "float");
    EXPECT_EQ(UniformName(""), "");
}

TEST(TexturePath, ExpandsNumberedSequences) {
    struct Case {
        const char* path;
        std::vector<std::string> files;
    };
    const Case kCases[] = {
        {"a/b[3].png", {"a/b0000.png", "a/b0001.png", "a/b0002.png"}},
        {"clip[1].mp4", {"clip0000.mp4"}},
        {"a[2]b[3]", {"a0000b[3]", "a0001b[3]"}},
        {"a[1x]", {"a0000"}},
        {"a[0]", {}},
        {"a[-1]", {}},
        {"a[x]", {}},
        {"a[]", {}},
        {"a[3", {"a[3"}},
        {"a3]", {"a3]"}},
        {"a]3[", {"a]3["}},
        {"plain.png", {"plain.png"}},
        {"", {""}},
    };
    for (const Case& c : kCases) {
        EXPECT_EQ(ExpandTexturePath(c.path), c.files) << c.path;
    }
    EXPECT_EQ(ExpandTexturePath("a[99999999999]").size(), 100000u);
    EXPECT_EQ(ExpandTexturePath("a[100000]").back(), "a99999");
}

}  // namespace
}  // namespace kelmo::test
