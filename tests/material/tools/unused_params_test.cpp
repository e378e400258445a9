// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/material/unused_params.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "catalogue/description_check.h"
#include "engine/shader/reserved_names.h"
#include "tests/support/temporary_folder.h"

namespace kelmo::material {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

TEST(DeclaredUniforms, AreFoundInEachFormOfDeclaration) {
    const struct {
        const char* source;
        std::set<std::string> names;
    } cases[] = {
        {"uniform float a;", {"a"}},
        {"uniform float a, b;\nuniform int c;", {"a", "b", "c"}},
        {"uniform\n  highp\tvec3 a ,b[4] , c[ 2 ];", {"a", "b", "c"}},
        {"uniform vec4 a = vec4(0.0), b;", {"a", "b"}},
        {"layout(location = 1) uniform mat4 m;", {"m"}},
        {"// uniform float a;\n/* uniform float b;\n*/ uniform float c; // , d", {"c"}},
        {"float nonuniform; uniformed float a;", {}},
        {"uniform float a", {}},
        {"/* uniform float a;", {}},
        {"", {}},
    };
    for (const auto& c : cases) EXPECT_EQ(DeclaredUniforms(c.source), c.names) << c.source;
}

class UnusedParamsTest : public testing::Test {
protected:
    UnusedParamsTest() {
        info.openglPath = folder.Path("a.frag");
        info.hasOpengl = 1;
    }
    void Param(const char* name, int32_t type) {
        auto param = std::make_shared<NLEFilterParams>();
        param->name = name;
        param->type = type;
        info.AddParam(info.paramCount++, param);
    }
    std::vector<std::string> Unused() { return UnusedParams(info, folder.Path("common")); }

    test::TemporaryFolder folder;
    NLEFilterInfo info;
};

TEST_F(UnusedParamsTest, LookThroughIncludesBesideTheFileAndInTheCommonFolder) {
    folder.Write("a.frag",
                 "#include \"beside.glsl\"\n  #  include \"shared.glsl\"\nuniform int c;\n");
    folder.Write("beside.glsl", "#include \"a.frag\"\nuniform float a;\n");
    folder.Write("common/shared.glsl", "uniform float b;\n");
    Param("a", kParamFloat);
    Param("b", kParamFloat);
    Param("c", kParamInt);
    Param("d", kParamFloat);
    EXPECT_THAT(Unused(), ElementsAre("d"));
}

TEST_F(UnusedParamsTest, LookIntoTheVertexShaderAndAllVariants) {
    folder.Write("a.frag", "#include \"variant:0\"\n");
    folder.Write("b.vert", "uniform float a;\n");
    folder.Write("one.glsl", "uniform float b;\n");
    folder.Write("two.glsl", "uniform float c;\n");
    info.vertexPath = folder.Path("b.vert");
    info.fragmentExterns = {{folder.Path("one.glsl"), folder.Path("two.glsl")}};
    for (const char* name : {"a", "b", "c"}) Param(name, kParamFloat);
    EXPECT_THAT(Unused(), IsEmpty());
}

TEST_F(UnusedParamsTest, AreNoTextsNorReservedWordsNorSettingsOfTheSound) {
    folder.Write("a.frag", "uniform float filter_;\n");
    Param("filter", kParamFloat);
    Param("words", kParamText);
    Param("audio_min", kParamFloat);
    EXPECT_THAT(Unused(), ElementsAre("audio_min"));
    info.hasAudio = 1;
    EXPECT_THAT(Unused(), IsEmpty());
}

TEST_F(UnusedParamsTest, ComeOutForAShaderThatIsMissing) {
    Param("a", kParamFloat);
    EXPECT_THAT(Unused(), ElementsAre("a"));
}

TEST(ReservedWords, AreThoseThatTheEngineMaps) {
    for (const std::string_view word : kReservedNames) {
        const std::string uniform = UniformName(word);
        EXPECT_EQ(uniform, std::string(word) + "_");
        EXPECT_EQ(PlainUniformName(uniform), word);
    }
}

}  // namespace
}  // namespace kelmo::material
