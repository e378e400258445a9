// SPDX-License-Identifier: GPL-3.0-or-later
// From files to programs: includes, variants, and errors that name the author's line.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engine/effect/effect_shaders.h"
#include "engine/effect_stage.h"

namespace kelmo::test {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;

class EngineShader : public ::testing::Test {
protected:
    EngineShader() { EngineLogLines::Take(); }

    EffectPointer MakeOf(const std::string& fragmentPath, const std::string& vertexPath = {},
                         const ShaderExterns& fragmentExterns = {},
                         const ShaderExterns& vertexExterns = {}) {
        EffectPointer effect;
        stage.Engine().CreateEngineEffect(1, 1, 4, false, fragmentPath.c_str(), effect, 0,
                                          vertexPath.c_str(), fragmentExterns, vertexExterns);
        return effect;
    }
    /// What the log says when a program of this fragment shader is built.
    std::string ErrorOf(const std::string& fragmentPath) {
        const EffectPointer effect = MakeOf(fragmentPath);
        EXPECT_NE(effect->CreateProgram(effect), 0);
        FrameRecord target = FrameRecord::TargetLess(1, 1, 4);
        EXPECT_NE(effect->Render(target, effect, 0), 0) << "without a program nothing is drawn";
        return EngineLogLines::Take();
    }
    Pixel PixelOf(const EffectPointer& effect) {
        EXPECT_EQ(effect->CreateProgram(effect), 0) << EngineLogLines::Take();
        return RenderPixels(effect)[0];
    }

    EffectStage stage;
    TemporaryFolder& folder = stage.Folder();
};

TEST_F(EngineShader, IncludesAreFoundBesideTheFileAndInTheCommonFolder) {
    folder.Write("qor_effect/material/common/tools.glsl",
                 "#include \"deeper.glsl\"\nfloat Red() { return Deep(); }\n");
    folder.Write("qor_effect/material/common/deeper.glsl", "float Deep() { return 1.0; }\n");
    folder.Write("qor_effect/material/mine/local/green.glsl", "float Green() { return 0.2; }\n");
    // Beside the file comes first.
    folder.Write("qor_effect/material/common/local/green.glsl", "not GLSL at all\n");
    const std::string path =
        folder.Write("qor_effect/material/mine/a.frag",
                     "#include \"tools.glsl\"\n"
                     "  #  include <local/green.glsl> // ours\r\n"
                     "#include \"deeper.glsl\"\n"
                     "#include \"tools.glsl\"\n"
                     "/* #include \"nowhere.glsl\"\n"
                     "#include \"nowhere.glsl\"\n*/\n"
                     "// #include \"nowhere.glsl\"\n"
                     "void main() { fragColor = vec4(Red(), Green(), 0, 1); }");
    EXPECT_EQ(PixelOf(MakeOf(path)), (Pixel{0, 51, 255, 255}));
}

TEST_F(EngineShader, FilesThatIncludeEachOtherAreTakenInOnce) {
    folder.Write("b.glsl", "#include \"a.frag\"\nfloat B() { return 1.0; }\n");
    const std::string path =
        folder.Write("a.frag", "#include \"b.glsl\"\nvoid main() { fragColor = vec4(B()); }\n");
    EXPECT_EQ(PixelOf(MakeOf(path)), kWhite);
}

TEST_F(EngineShader, WhatIsWrongWithAFileIsSaidWithItsLine) {
    struct Case {
        const char* name;
        const char* text;
        const char* expected;  ///< behind the path
    };
    const Case cases[] = {
        {"missing include", "\n#include \"gone.glsl\"\n", ":2: cannot find include 'gone.glsl'"},
        {"no name", "#include\n", ":1: #include wants a file name in quotes"},
        {"open quote", "#include \"x\n", ":1: #include wants a file name in quotes"},
        {"empty name", "#include \"\"\n", ":1: #include wants a file name in quotes"},
        {"a folder", "#include \".\"\n", ":1: cannot find include '.'"},
        {"version", "\n\n #version 330\n", ":3: #version is written by the engine"},
        {"no such group", "#include \"variant:0\"\n", ":1: there is no group of files for"},
        {"no number", "#include \"variant:x\"\n", ":1: there is no group of files for"},
        {"unknown word", "\n\nvoid main() { fragColor = vec4(\n  wrong); }\n", ":4: error:"},
        {"syntax", "void main() {\n  this is not it\n}\n", ":2: error:"},
        {"no main", "float F() { return 1.0; }\n", ": does not link"},
        {"array", "uniform float a[2];\nvoid main() { fragColor = vec4(a[0] + a[1]); }\n",
         ": uniform array 'a[0]'"},
        {"array of one", "uniform float a[1];\nvoid main() { fragColor = vec4(a[0]); }\n",
         ": uniform array 'a[0]'"},
        {"unknown type", "uniform mat2 m;\nvoid main() { fragColor = vec4(m[0], m[1]); }\n",
         ": uniform 'm' has a type that nothing can be given to"},
    };
    int number = 0;
    for (const Case& each : cases) {
        SCOPED_TRACE(each.name);
        const std::string path = folder.Write("f" + std::to_string(number++) + ".frag", each.text);
        EXPECT_THAT(ErrorOf(path), HasSubstr(path + each.expected));
    }
}

TEST_F(EngineShader, AnErrorInAnIncludedFileNamesThatFile) {
    const std::string inner = folder.Write("qor_effect/material/common/inner.glsl",
                                           "\n\nfloat F() { return mistake; }\n");
    const std::string path = folder.Write("qor_effect/material/x/outer.frag",
                                          "\n#include \"inner.glsl\"\nfloat G() { return oops; "
                                          "}\nvoid main() { fragColor = vec4(F()); }");
    EXPECT_THAT(ErrorOf(path),
                AllOf(HasSubstr(inner + ":3: error:"), HasSubstr(path + ":3: error:"),
                      HasSubstr("`mistake'"), HasSubstr("`oops'")));
}

TEST_F(EngineShader, AnErrorInTheVertexFileNamesThatFile) {
    const std::string fragment = folder.Write("a.frag", "void main() { fragColor = vec4(1); }");
    const std::string vertex = folder.Write("a.vert", "\nvoid main() { gl_Position = nonsense; }");
    const EffectPointer effect = MakeOf(fragment, vertex);
    EXPECT_NE(effect->CreateProgram(effect), 0);
    EXPECT_THAT(EngineLogLines::Take(), HasSubstr(vertex + ":2: error:"));
}

TEST_F(EngineShader, AMissingFileIsNamed) {
    EXPECT_THAT(ErrorOf(folder.Path("none.frag")),
                HasSubstr(folder.Path("none.frag") + ": cannot be read"));
    EXPECT_THAT(ErrorOf(folder.MakeFolder("folder.frag")), HasSubstr("cannot be read"));
}

TEST_F(EngineShader, EncryptedAndNamelessShadersAreRefused) {
    const std::string path = folder.Write("a.frag", kColorShader);
    EffectPointer effect;
    stage.Engine().CreateEngineEffect(1, 1, 4, false, path.c_str(), effect, 1, "", {}, {});
    EXPECT_FALSE(effect);
    EXPECT_THAT(EngineLogLines::Take(), AllOf(HasSubstr(path), HasSubstr("encrypted")));
    for (const char* nameless : {static_cast<const char*>(nullptr), ""}) {
        effect.reset();
        stage.Engine().CreateEngineEffect(1, 1, 4, false, nameless, effect, 0, "", {}, {});
        EXPECT_FALSE(effect);
        EXPECT_THAT(EngineLogLines::Take(), HasSubstr("fragment shader"));
    }
    stage.Engine().CreateEngineEffect(0, 1, 4, false, path.c_str(), effect, 0, nullptr, {}, {});
    EXPECT_FALSE(effect);
    EXPECT_THAT(EngineLogLines::Take(), HasSubstr("outside"));
}

TEST_F(EngineShader, VariantsPickTheFileOfTheirGroup) {
    const std::string red = folder.Write("red.glsl", "vec3 Hue() { return vec3(1, 0, 0); }");
    const std::string blue = folder.Write("blue.glsl", "vec3 Hue() { return vec3(0, 0, 1); }");
    const std::string full = folder.Write("full.glsl", "float Cover() { return 1.0; }");
    const std::string none = folder.Write("none.glsl", "float Cover() { return 0.0; }");
    const std::string path = folder.Write("a.frag",
                                          "#include \"variant:0\"\n#include \"variant:1\"\n"
                                          "void main() { fragColor = vec4(Hue(), 1) * Cover(); }");
    const EffectPointer effect = MakeOf(path, "", {{red, blue}, {full, none}});
    EXPECT_EQ(PixelOf(effect), kRed) << "the first of each until told otherwise";
    const std::pair<std::vector<int32_t>, Pixel> choices[] = {
        {{1, 0}, kBlue}, {{0, 1}, kNothing}, {{1}, kBlue}, {{}, kRed}, {{0, 0, 7}, kRed}};
    for (const auto& [indices, expected] : choices) {
        effect->SetVariantIndices(indices);
        EXPECT_EQ(RenderPixels(effect)[0], expected);
    }
    EngineLogLines::Take();
    effect->SetVariantIndices({2, 0});
    FrameRecord target = FrameRecord::TargetLess(1, 1, 4);
    EXPECT_NE(effect->Render(target, effect, 0), 0);
    EXPECT_THAT(EngineLogLines::Take(),
                HasSubstr(path + ":1: 'variant:0' has no file with index 2"));
    effect->SetVariantIndices({1, 0});
    EXPECT_EQ(RenderPixels(effect)[0], kBlue) << "a choice that failed spoils no other";
}

TEST_F(EngineShader, VertexVariantsFollowTheSameIndices) {
    const std::string left = folder.Write("l.glsl", "float Side() { return -2.0; }");
    const std::string here = folder.Write("h.glsl", "float Side() { return 0.0; }");
    const std::string vertex =
        folder.Write("a.vert",
                     "#include \"variant:1\"\nin vec4 position;\n"
                     "void main() { gl_Position = position + vec4(Side(), 0, 0, 0); }");
    const EffectPointer effect =
        MakeOf(folder.Write("a.frag", "void main() { fragColor = vec4(1); }"), vertex, {},
               {{}, {here, left}});
    EXPECT_EQ(PixelOf(effect), kWhite);
    effect->SetVariantIndices({0, 1});
    EXPECT_EQ(RenderPixels(effect)[0], kNothing);
}

TEST_F(EngineShader, EqualSourcesShareOneProgramThatDiesWithItsLastUser) {
    GlDevice& device = *stage.Engine().Device();
    const ShaderFiles files{folder.Write("a.frag", kColorShader), "", {}, {}};
    const ShaderFiles twin{folder.Write("other/b.frag", kColorShader), "", {}, {}};
    std::string error;
    const GlScope scope(device);
    auto first = BuildShaders(device, files, {}, 0, error);
    EXPECT_EQ(first, BuildShaders(device, twin, {}, 0, error));
    EXPECT_EQ(device.Programs().size(), 1u);
    const GLuint id = first->Id();
    EXPECT_TRUE(glIsProgram(id));
    first.reset();
    EXPECT_FALSE(glIsProgram(id));
}

TEST_F(EngineShader, ADriversLogIsMappedWhateverItsForm) {
    const std::vector<std::string> files = {"a.frag", "b.glsl"};
    const std::pair<const char*, const char*> cases[] = {
        {"0:100012(7): error: no `x'", "a.frag:12: error: no `x'"},
        {"0(200003) : error C1008: undefined", "b.glsl:3: error C1008: undefined"},
        {"ERROR: 0:200003: 'x' : undeclared", "b.glsl:3: 'x' : undeclared"},
        {"0:7(1): error: in ours", "prelude:7: error: in ours"},
        {"0:900007(1): error: no such file", "prelude:7: error: no such file"},
        {"3 errors generated", "3 errors generated"},
        {"0:", "0:"},
        {"0:100001(", "0:100001("},
        {"", ""},
    };
    for (const auto& [log, expected] : cases) EXPECT_EQ(MapCompileLog(log, files, 0), expected);
    EXPECT_EQ(MapCompileLog("0:100013: x\n\n0:100014: y\n", files, -1),
              "a.frag:12: x\na.frag:13: y");
}

TEST_F(EngineShader, TheCommonFolderBelongsToTheLastRoot) {
    EXPECT_EQ(CommonFolderOf("/x/qor_effect/material/f/a.frag"), "/x/qor_effect/material/common");
    EXPECT_EQ(CommonFolderOf("C:\\x\\qor_effect\\material\\a.frag"),
              "C:\\x\\qor_effect\\material/common");
    EXPECT_EQ(CommonFolderOf("/qor_effect/y/qor_effect/a.frag"),
              "/qor_effect/y/qor_effect/material/common");
    EXPECT_EQ(CommonFolderOf("/elsewhere/a.frag"), "");
}

}  // namespace
}  // namespace kelmo::test
