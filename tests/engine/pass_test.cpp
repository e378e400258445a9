// SPDX-License-Identifier: GPL-3.0-or-later
// What a pass draws: attributes, instances, lines, blending, depth, culling, clearing.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>

#include "engine/effect_stage.h"

namespace kelmo::test {
namespace {

using ::testing::HasSubstr;

/// Draws "position" in the colour "tint" that comes with each vertex.
constexpr const char* kTintVertex = R"(
    in vec4 position; in vec4 tint; out vec4 vTint;
    void main() { gl_Position = position; vTint = tint; })";
constexpr const char* kTintFragment = "in vec4 vTint; void main() { fragColor = vTint; }";

/// Two triangles that cover device x from `left` to `right` at depth z, counter-clockwise.
struct Mesh {
    std::vector<float> position;
    std::vector<float> tint;

    void AddRectangle(float left, float right, float z, const std::array<float, 4>& color,
                      bool turned = false) {
        float x[] = {left, right, right, left, right, left};
        float y[] = {-1, -1, 1, -1, 1, 1};
        if (turned) {
            std::swap(x[1], x[2]), std::swap(y[1], y[2]);
            std::swap(x[4], x[5]), std::swap(y[4], y[5]);
        }
        for (int i = 0; i < 6; ++i) {
            position.insert(position.end(), {x[i], y[i], z, 1});
            tint.insert(tint.end(), color.begin(), color.end());
        }
    }
    void Give(const EffectPointer& effect) const {
        effect->AddVertexAttribute("position", 4, position.data(), false, false);
        effect->AddVertexAttribute("tint", 4, tint.data(), false, false);
        effect->SetVertexCount(static_cast<int>(position.size() / 4));
    }
};

class EnginePass : public ::testing::Test {
protected:
    EffectPointer MakeTinted(int width, int height) {
        return stage.Make(width, height, kTintFragment, kTintVertex);
    }
    EffectStage stage;
};

TEST_F(EnginePass, AVertexFileWithoutAttributesDrawsTheQuad) {
    const EffectPointer effect =
        stage.Make(2, 2, "void main() { fragColor = vec4(vTexCoord, 0, 1); }",
                   "in vec4 position; in vec3 texcoord;"
                   "void main() { gl_Position = position;"
                   " vTexCoord = texcoord.xy; }");
    EXPECT_EQ(RenderPixels(effect),
              (Pixels{{0, 191, 64, 255}, {0, 191, 191, 255}, {0, 64, 64, 255}, {0, 64, 191, 255}}));
}

TEST_F(EnginePass, AttributesAreDrawnWhereTheyStand) {
    const EffectPointer effect = MakeTinted(2, 1);
    Mesh mesh;
    mesh.AddRectangle(-1, 0, 0, {1, 0, 0, 1});
    mesh.AddRectangle(0, 1, 0, {0, 0, 1, 1});
    mesh.Give(effect);
    EXPECT_EQ(RenderPixels(effect), (Pixels{kRed, kBlue}));
}

TEST_F(EnginePass, AttributeDataIsBorrowedUntilTheNextRenderOnly) {
    const EffectPointer effect = MakeTinted(2, 1);
    {
        Mesh mesh;
        mesh.AddRectangle(-1, 1, 0, {1, 0, 0, 1});
        mesh.Give(effect);
        EXPECT_EQ(RenderPixels(effect), Filled(2, kRed));
    }
    EXPECT_EQ(RenderPixels(effect), Filled(2, kRed)) << "draws what was uploaded";
    effect->SetVertexCount(6000);
    EXPECT_EQ(RenderPixels(effect), Filled(2, kRed)) << "never more than was uploaded";
    effect->SetVertexCount(0);
    EXPECT_EQ(RenderPixels(effect), Filled(2, kNothing));
}

TEST_F(EnginePass, DataOfAFailedRenderIsForgotten) {
    const EffectPointer effect = MakeTinted(1, 1);
    {
        Mesh mesh;
        mesh.AddRectangle(-1, 1, 0, {1, 0, 0, 1});
        mesh.Give(effect);
        effect->SetVariantIndices({1});  // no variants: the same program under another choice
        Pixels pixels;
        FrameRecord target = TargetOf(pixels, 1, 1);
        target.stride = 1;
        EXPECT_NE(effect->Render(target, effect, 0), 0);
    }
    EXPECT_EQ(RenderPixels(effect), Filled(1, kRed)) << "the upload came before the failure";
}

TEST_F(EnginePass, ThreeComponentPositionsWorkWithTheBuiltInVertexShader) {
    const EffectPointer effect =
        stage.Make(2, 2, "void main() { fragColor = vec4(vTexCoord, 0, 1); }");
    const float position[] = {-1, 1, 0, 1, 1, 0, 1, -1, 0, -1, 1, 0, 1, -1, 0, -1, -1, 0};
    const float texcoord[] = {0, 1, 1, 1, 1, 0, 0, 1, 1, 0, 0, 0};
    effect->AddVertexAttribute("position", 3, position, true, false);
    effect->AddVertexAttribute("texcoord", 2, texcoord, true, false);
    effect->SetVertexCount(6);
    EXPECT_EQ(RenderPixels(effect),
              (Pixels{{0, 191, 64, 255}, {0, 191, 191, 255}, {0, 64, 64, 255}, {0, 64, 191, 255}}));
}

TEST_F(EnginePass, BlendModesCombineWhatAPassDraws) {
    struct Case {
        int mode;
        Pixel expected;
    };
    // Red of half cover over opaque green, premultiplied: 51 / 255 = 0.2 exactly.
    for (const Case& each :
         {Case{kBlendOver, {0, 204, 51, 255}}, Case{kBlendReplace, {0, 0, 51, 51}},
          Case{kBlendAdd, {0, 255, 51, 255}}}) {
        SCOPED_TRACE(each.mode);
        const EffectPointer effect = MakeTinted(1, 1);
        Mesh mesh;
        mesh.AddRectangle(-1, 1, 0, {0, 1, 0, 1});
        mesh.AddRectangle(-1, 1, 0, {0.2f, 0, 0, 0.2f});
        mesh.Give(effect);
        effect->SetBlendMode(each.mode);
        EXPECT_EQ(RenderPixels(effect)[0], each.expected);
    }
}

TEST_F(EnginePass, TheQuadBlendsWithTheClearColour) {
    const EffectPointer effect = stage.Make(1, 1, kColorShader);
    effect->SetUniformVec4("color", 0.2f, 0, 0, 0.2f);
    effect->SetClearColor(0, 0, 1, 1);
    effect->SetBlendMode(kBlendOver);
    EXPECT_EQ(RenderPixels(effect)[0], (Pixel{204, 0, 51, 255}));
    effect->SetBlendMode(kBlendReplace);
    EXPECT_EQ(RenderPixels(effect)[0], (Pixel{0, 0, 51, 51}));
    effect->SetClearColor(0, 0, 0, 0);
    effect->SetBlendMode(kBlendAdd);
    EXPECT_EQ(RenderPixels(effect)[0], (Pixel{0, 0, 51, 51}));
}

TEST_F(EnginePass, EachPassStartsFromTheClearColour) {
    const EffectPointer effect = MakeTinted(2, 1);
    Mesh mesh;
    mesh.AddRectangle(-1, 0, 0, {1, 0, 0, 1});
    mesh.Give(effect);
    EXPECT_EQ(RenderPixels(effect), (Pixels{kRed, kNothing}));
    effect->SetClearColor(0, 1, 0, 1);
    EXPECT_EQ(RenderPixels(effect), (Pixels{kRed, kGreen}));
}

TEST_F(EnginePass, AnUnknownBlendModeIsReported) {
    const EffectPointer effect = stage.Make(1, 1, kColorShader);
    EngineLogLines::Take();
    effect->SetBlendMode(4);
    EXPECT_THAT(EngineLogLines::Take(), HasSubstr("blend mode 4"));
}

TEST_F(EnginePass, DepthDecidesWhenItIsTestedAndWritten) {
    struct Case {
        const char* name;
        bool test, write;
        Pixel expected;
    };
    for (const Case& each : {Case{"off: the last one", false, true, kBlue},
                             Case{"tested: the nearer one", true, true, kRed},
                             Case{"not written: the last one", true, false, kBlue}}) {
        SCOPED_TRACE(each.name);
        const EffectPointer effect = MakeTinted(1, 1);
        Mesh mesh;
        mesh.AddRectangle(-1, 1, -0.5f, {1, 0, 0, 1});
        mesh.AddRectangle(-1, 1, 0.5f, {0, 0, 1, 1});
        mesh.Give(effect);
        effect->SetDepthTest(each.test);
        effect->SetDepthWrite(each.write);
        EXPECT_EQ(RenderPixels(effect)[0], each.expected);
        EXPECT_EQ(RenderPixels(effect)[0], each.expected) << "depth begins anew";
        EXPECT_EQ(effect->Resize(3, 2, 12, effect), 0);
        EXPECT_EQ(RenderPixels(effect), Filled(6, each.expected)) << "depth has the new size";
    }
}

TEST_F(EnginePass, CullingTakesAwayWhatIsSeenFromBehind) {
    const EffectPointer effect = MakeTinted(2, 1);
    Mesh mesh;
    mesh.AddRectangle(-1, 0, 0, {1, 0, 0, 1});
    mesh.AddRectangle(0, 1, 0, {0, 0, 1, 1}, true);
    mesh.Give(effect);
    EXPECT_EQ(RenderPixels(effect), (Pixels{kRed, kBlue}));
    effect->SetCullFace(true);
    EXPECT_EQ(RenderPixels(effect), (Pixels{kRed, kNothing}));
    effect->SetCullFace(false);
    EXPECT_EQ(RenderPixels(effect), (Pixels{kRed, kBlue}));
}

/// Moves the unit quad to the place of the instance.
constexpr const char* kInstanceVertex = R"(
    in vec4 position; in vec2 place; out vec4 vTint;
    void main() {
        gl_Position = vec4((position.x + 1.0) / 4.0 - 1.0 + place.x * 0.5, position.yzw);
        vTint = vec4(place.y, 0, 0, 1);
    })";

TEST_F(EnginePass, InstancesEachHaveTheirEntry) {
    const EffectPointer effect = stage.Make(4, 1, kTintFragment, kInstanceVertex);
    const float places[] = {0, 1, 2, 0.2f, 3, 0.4f};
    effect->SetInstanceArrayVec2("place", places, 3);
    const Pixels three = {kRed, kNothing, {0, 0, 51, 255}, {0, 0, 102, 255}};
    EXPECT_EQ(RenderPixels(effect), three) << "without a count: as many as there are entries";
    effect->SetInstanceCount(2);
    EXPECT_EQ(RenderPixels(effect), (Pixels{kRed, kNothing, {0, 0, 51, 255}, kNothing}));
    effect->SetInstanceCount(500);
    EXPECT_EQ(RenderPixels(effect), three) << "never more than there are entries";
    effect->SetInstanceCount(0);
    EXPECT_EQ(RenderPixels(effect), Filled(4, kNothing));
}

TEST_F(EnginePass, AnEffectWithoutInstancesIsNotDisturbedByOneWithThem) {
    const EffectPointer instanced = stage.Make(4, 1, kTintFragment, kInstanceVertex);
    const float places[] = {0, 1};
    instanced->SetInstanceArrayVec2("place", places, 1);
    const EffectPointer plain = MakeTinted(2, 1);
    Mesh mesh;
    mesh.AddRectangle(-1, 1, 0, {0, 1, 0, 1});
    mesh.Give(plain);
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(RenderPixels(instanced)[0], kRed);
        EXPECT_EQ(RenderPixels(plain), Filled(2, kGreen));
    }
}

TEST_F(EnginePass, AnAttributeThatIsNotGivenReadsAsZeroZeroZeroOne) {
    const EffectPointer effect = MakeTinted(1, 1);
    Mesh mesh;
    mesh.AddRectangle(-1, 1, 0, {1, 1, 1, 1});
    effect->AddVertexAttribute("position", 4, mesh.position.data(), false, false);
    effect->SetVertexCount(6);
    EXPECT_EQ(RenderPixels(effect)[0], kBlack);
}

TEST_F(EnginePass, TheIndexListDrawsLines) {
    const EffectPointer effect = MakeTinted(5, 3);
    // A line through the middle row, and a vertex that no line uses.
    const float position[] = {-1, 0, 0, 1, 1, 0, 0, 1, 0, 1, 0, 1};
    const float tint[] = {1, 0, 0, 1, 1, 0, 0, 1, 1, 0, 0, 1};
    const uint32_t lines[] = {0, 1, 0, 1, 1, 0};  // vertex count x components
    effect->AddVertexAttribute("position", 4, position, true, false);
    effect->AddVertexAttribute("tint", 4, tint, true, false);
    effect->AddVertexAttribute("element", 2, lines, true, true);
    effect->SetVertexCount(3);
    effect->SetDrawType(kDrawIndexedLines);
    Pixels expected = Filled(15, kNothing);
    for (size_t x = 5; x < 10; ++x) expected[x] = kRed;
    EXPECT_EQ(RenderPixels(effect), expected);
}

TEST_F(EnginePass, LinesWithoutAListOrBeyondTheVerticesAreRefused) {
    const EffectPointer effect = MakeTinted(1, 1);
    Mesh mesh;
    mesh.AddRectangle(-1, 1, 0, {1, 1, 1, 1});
    mesh.Give(effect);
    effect->SetDrawType(kDrawIndexedLines);
    FrameRecord target = FrameRecord::TargetLess(1, 1, 4);
    EngineLogLines::Take();
    EXPECT_NE(effect->Render(target, effect, 0), 0);
    EXPECT_THAT(EngineLogLines::Take(), HasSubstr("index list"));
    const uint32_t lines[] = {0, 1, 1, 2, 2, 0, 3, 4, 4, 5, 5, 6000};
    effect->AddVertexAttribute("element", 2, lines, true, true);
    EXPECT_NE(effect->Render(target, effect, 0), 0);
    EXPECT_THAT(EngineLogLines::Take(), HasSubstr("6000"));
}

TEST_F(EnginePass, MultisamplingSmoothsEdges) {
    for (const bool smooth : {false, true}) {
        const EffectPointer effect = stage.MakeUnbuilt(8, 8, kTintFragment, kTintVertex, smooth);
        ASSERT_EQ(effect->CreateProgram(effect), 0);
        const float position[] = {-1, -1, 0, 1, 1, -1, 0, 1, -1, 0.9f, 0, 1};
        const float tint[] = {1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1};
        effect->AddVertexAttribute("position", 4, position, true, false);
        effect->AddVertexAttribute("tint", 4, tint, true, false);
        effect->SetVertexCount(3);
        effect->SetDepthTest(smooth);
        int partial = 0;
        for (const Pixel& pixel : RenderPixels(effect)) partial += pixel.a != 0 && pixel.a != 255;
        EXPECT_EQ(partial > 0, smooth);
        EXPECT_EQ(effect->Resize(3, 3, 12, effect), 0);
        EXPECT_EQ(RenderPixels(effect)[6].a, 255) << "bottom left, after a change of size";
    }
}

TEST_F(EnginePass, MultisampledColoursArriveUnchanged) {
    const EffectPointer effect = stage.MakeUnbuilt(2, 2, kCopyShader, "", true);
    ASSERT_EQ(effect->CreateProgram(effect), 0);
    const Pixels picture = {
        {10, 20, 30, 255}, {40, 50, 60, 255}, {70, 80, 90, 200}, {1, 2, 3, 128}};
    SetImage(effect, 0, picture, 2, 2);
    EXPECT_EQ(RenderPixels(effect), picture);
}

}  // namespace
}  // namespace kelmo::test
