// SPDX-License-Identifier: GPL-3.0-or-later
// Values that go in: kinds and conversions, arrays of any length, audio.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>

#include "engine/effect_stage.h"

namespace kelmo::test {
namespace {

using ::testing::HasSubstr;

class EngineUniform : public ::testing::Test {
protected:
    /// One pixel that a shader computes.
    Pixel Compute(const std::string& fragment,
                  const std::function<void(NLEOpenGLEngineEffect&)>& set) {
        const EffectPointer effect = stage.Make(1, 1, fragment);
        set(*effect);
        return RenderPixels(effect)[0];
    }

    EffectStage stage;
};

TEST_F(EngineUniform, EveryKindArrivesAtItsPlace) {
    const std::string fragment = R"(
        uniform float f; uniform int i; uniform vec2 v2; uniform vec3 v3; uniform vec4 v4;
        uniform mat3 m3; uniform mat4 m4; uniform bool b;
        void main() {
            bool ok = f == 0.5 && i == -7 && v2 == vec2(1, 2) && v3 == vec3(3, 4, 5) &&
                v4 == vec4(6, 7, 8, 9) && b &&
                m3[0] == vec3(1, 2, 3) && m3[2] == vec3(7, 8, 9) &&
                m4[1] == vec4(5, 6, 7, 8) && m4[3] == vec4(13, 14, 15, 16);
            fragColor = ok ? vec4(0, 1, 0, 1) : vec4(1, 0, 0, 1);
        })";
    float m[16];
    for (int i = 0; i < 16; ++i) m[i] = static_cast<float>(i + 1);
    EXPECT_EQ(Compute(fragment,
                      [&](NLEOpenGLEngineEffect& effect) {
                          effect.SetUniformFloat("f", 0.5f);
                          effect.SetUniformInt("i", -7);
                          effect.SetUniformVec2("v2", 1, 2);
                          effect.SetUniformVec3("v3", 3, 4, 5);
                          effect.SetUniformVec4("v4", 6, 7, 8, 9);
                          effect.SetUniformMat3("m3", m);
                          effect.SetUniformMat4("m4", m);
                          effect.SetUniformInt("b", 1);
                      }),
              kGreen);
}

TEST_F(EngineUniform, ANameThatGlslReservesIsDeclaredWithAnUnderscore) {
    const std::string fragment = R"(
        uniform float filter_; uniform float mine_;
        void main() { fragColor = vec4(0, filter_, mine_, 1); })";
    EXPECT_EQ(Compute(fragment,
                      [](NLEOpenGLEngineEffect& effect) {
                          effect.SetUniformFloat("filter", 1.0F);
                          effect.SetUniformFloat("mine", 1.0F);
                      }),
              kGreen);
}

TEST_F(EngineUniform, IntegersBecomeFloatsAndFloatsAreCutTowardsZero) {
    const std::string fragment = R"(
        uniform float f; uniform int low; uniform int high; uniform int huge; uniform int none;
        void main() {
            bool ok = f == -3.0 && low == -2 && high == 2 && huge == 2147483647 && none == 0;
            fragColor = ok ? vec4(0, 1, 0, 1) : vec4(1, 0, 0, 1);
        })";
    EXPECT_EQ(Compute(fragment,
                      [](NLEOpenGLEngineEffect& effect) {
                          effect.SetUniformInt("f", -3);
                          effect.SetUniformFloat("low", -2.9f);
                          effect.SetUniformFloat("high", 2.9f);
                          effect.SetUniformFloat("huge", std::numeric_limits<float>::infinity());
                          effect.SetUniformFloat("none", std::nanf(""));
                      }),
              kGreen);
}

TEST_F(EngineUniform, AVectorFillsWhatFitsAndTheRestIsZero) {
    const std::string fragment = R"(
        uniform vec2 cut; uniform vec4 filled;
        void main() {
            bool ok = cut == vec2(1, 2) && filled == vec4(5, 6, 0, 0);
            fragColor = ok ? vec4(0, 1, 0, 1) : vec4(1, 0, 0, 1);
        })";
    EXPECT_EQ(Compute(fragment,
                      [](NLEOpenGLEngineEffect& effect) {
                          effect.SetUniformVec4("cut", 1, 2, 3, 4);
                          effect.SetUniformVec2("filled", 5, 6);
                      }),
              kGreen);
}

TEST_F(EngineUniform, AMatrixOfTheWrongSizeIsReportedByName) {
    EngineLogLines::Take();
    const float m[9] = {};
    Compute("uniform mat4 turn; void main() { fragColor = turn[0]; }",
            [&](NLEOpenGLEngineEffect& effect) { effect.SetUniformMat3("turn", m); });
    EXPECT_THAT(EngineLogLines::Take(), HasSubstr("'turn'"));
}

TEST_F(EngineUniform, AValueThatWasNeverSetIsTheShadersOwn) {
    EXPECT_EQ(Compute("uniform float x = 0.2; uniform float y;"
                      "void main() { fragColor = vec4(x, y, fade, result_roi.w); }",
                      [](NLEOpenGLEngineEffect&) {}),
              (Pixel{255, 0, 51, 255}));
}

TEST_F(EngineUniform, EffectsThatShareAProgramDoNotShareValues) {
    const EffectPointer red = stage.Make(1, 1, kColorShader);
    const EffectPointer blue = stage.Make(1, 1, kColorShader);
    const EffectPointer unset = stage.Make(1, 1, kColorShader);
    red->SetUniformVec4("color", 1, 0, 0, 1);
    blue->SetUniformVec4("color", 0, 0, 1, 1);
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(RenderPixels(red)[0], kRed);
        EXPECT_EQ(RenderPixels(unset)[0], kNothing);
        EXPECT_EQ(RenderPixels(blue)[0], kBlue);
    }
}

TEST_F(EngineUniform, AChangedValueIsSeenByTheNextPass) {
    const EffectPointer effect = stage.Make(1, 1, kColorShader);
    for (const float green : {0.0f, 1.0f, 0.0f}) {
        effect->SetUniformVec4("color", 0, green, 0, 1);
        EXPECT_EQ(RenderPixels(effect)[0], green > 0 ? kGreen : kBlack);
    }
}

TEST_F(EngineUniform, NullNamesAndNullMatricesAreIgnored) {
    const EffectPointer effect = stage.Make(1, 1, kColorShader);
    effect->SetUniformFloat(nullptr, 1);
    effect->SetUniformInt(nullptr, 1);
    effect->SetUniformMat4("color", nullptr);
    effect->SetUniformArrayVec4(nullptr, nullptr, 3);
    effect->SetInstanceArrayVec2(nullptr, nullptr, 3);
    effect->AddVertexAttribute(nullptr, 3, nullptr, false, false);
    EXPECT_EQ(RenderPixels(effect)[0], kNothing);
}

TEST_F(EngineUniform, TheSizeOfThePictureIsKnown) {
    const EffectPointer effect =
        stage.Make(24, 16, "void main() { fragColor = vec4(uResolution / 255.0, 0, 1); }");
    EXPECT_EQ(RenderPixels(effect)[0], (Pixel{0, 16, 24, 255}));
    EXPECT_EQ(effect->Resize(7, 5, 28, effect), 0);
    EXPECT_EQ(RenderPixels(effect)[0], (Pixel{0, 5, 7, 255}));
}

// --- arrays ---

/// Pixel x shows entry x of "values", and in blue its length.
constexpr const char* kArrayShader = R"(
    uniform samplerBuffer values; uniform int values_count;
    void main() {
        vec4 entry = ArrayAt(values, int(gl_FragCoord.x));
        fragColor = vec4(entry.rg, float(values_count) / 255.0, 1);
    })";

TEST_F(EngineUniform, AnArrayIsReadByIndexAndEndsAtItsLength) {
    const EffectPointer effect = stage.Make(4, 1, kArrayShader);
    const float pairs[] = {1, 0, 0, 1};
    effect->SetUniformArrayVec2("values", pairs, 2);
    EXPECT_EQ(RenderPixels(effect),
              (Pixels{{2, 0, 255, 255}, {2, 255, 0, 255}, {2, 0, 0, 255}, {2, 0, 0, 255}}));
    const float rows[] = {0, 1, 9, 9, 1, 1, 9, 9, 1, 0, 9, 9};
    effect->SetUniformArrayVec4("values", rows, 3);
    EXPECT_EQ(RenderPixels(effect),
              (Pixels{{3, 255, 0, 255}, {3, 255, 255, 255}, {3, 0, 255, 255}, {3, 0, 0, 255}}));
    effect->SetUniformArrayVec4("values", nullptr, 0);
    EXPECT_EQ(RenderPixels(effect), Filled(4, kBlack));
}

TEST_F(EngineUniform, AnArrayWithoutDataIsZerosOfThatLength) {
    const EffectPointer effect = stage.Make(1, 1, kArrayShader, "", [](NLEOpenGLEngineEffect& it) {
        it.AddUniformArrayVec4("values", nullptr, 25);
    });
    EXPECT_EQ(RenderPixels(effect)[0], (Pixel{25, 0, 0, 255}));
}

TEST_F(EngineUniform, AnArrayOfTenThousandEntriesIsReadToItsEnd) {
    constexpr int kCount = 10000;
    std::vector<float> data(static_cast<size_t>(kCount) * 4);
    for (int i = 0; i < kCount; ++i) data[static_cast<size_t>(i) * 4] = static_cast<float>(i);
    const EffectPointer effect = stage.Make(1, 1, R"(
        uniform samplerBuffer many;
        void main() {
            bool ok = true;
            for (int i = 0; i < 10000; ++i) ok = ok && ArrayAt(many, i).x == float(i);
            fragColor = ok ? vec4(0, 1, 0, 1) : vec4(1, 0, 0, 1);
        })");
    effect->SetUniformArrayVec4("many", data.data(), kCount);
    EXPECT_EQ(RenderPixels(effect)[0], kGreen);
}

TEST_F(EngineUniform, APlainUniformArrayIsRefusedWithAHint) {
    EngineLogLines::Take();
    const EffectPointer effect = stage.MakeUnbuilt(
        1, 1, "uniform vec4 box[3]; void main() { fragColor = box[int(gl_FragCoord.x)]; }");
    EXPECT_NE(effect->CreateProgram(effect), 0);
    EXPECT_THAT(EngineLogLines::Take(), HasSubstr("samplerBuffer"));
}

TEST_F(EngineUniform, TheSpectrumIsReadByIndexAndInterpolated) {
    const EffectPointer effect = stage.Make(
        5, 1,
        "void main() { fragColor = vec4(AudioAt((gl_FragCoord.x - 0.5) / 4.0), audio_intensity,"
        " float(audio_spectrum_count) / 255.0, 1); }",
        "", [](NLEOpenGLEngineEffect& it) {
            EXPECT_EQ(it.AddAudioBuffer(), 0);
            it.AddUniformFloat("audio_intensity", 0.0f);
        });
    const float bands[] = {0.0f, 0.4f, 1.0f};
    effect->SetAudioBuffer(0, 3, bands);
    effect->SetUniformFloat("audio_intensity", 0.6f);
    EXPECT_EQ(RenderPixels(effect), (Pixels{{3, 153, 0, 255},
                                            {3, 153, 51, 255},
                                            {3, 153, 102, 255},
                                            {3, 153, 179, 255},
                                            {3, 153, 255, 255}}));
    effect->SetAudioBuffer(0, 0, nullptr);
    EXPECT_EQ(RenderPixels(effect), Filled(5, {0, 153, 0, 255}));
}

TEST_F(EngineUniform, SeveralSpectraAreNumbered) {
    const EffectPointer effect =
        stage.Make(1, 1, "void main() { fragColor = vec4(AudioAt(0.0), AudioAt1(0.0), 0, 1); }", "",
                   [](NLEOpenGLEngineEffect& it) {
                       EXPECT_EQ(it.AddAudioBuffer(), 0);
                       EXPECT_EQ(it.AddAudioBuffer(), 1);
                   });
    const float first = 0.2f;
    const float second = 0.4f;
    effect->SetAudioBuffer(0, 1, &first);
    effect->SetAudioBuffer(1, 1, &second);
    EXPECT_EQ(RenderPixels(effect)[0], (Pixel{0, 102, 51, 255}));
    EngineLogLines::Take();
    effect->SetAudioBuffer(2, 1, &second);
    EXPECT_THAT(EngineLogLines::Take(), HasSubstr("no audio buffer 2"));
}

}  // namespace
}  // namespace kelmo::test
