// SPDX-License-Identifier: GPL-3.0-or-later
// Pictures that go in: orientation, layouts, odd sizes, and what a slot keeps.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>

#include "engine/effect_stage.h"

namespace kelmo::test {
namespace {

using ::testing::HasSubstr;

/// Four pixels that are all different in every channel: r g on top, b w below.
const Pixels kCorners = {{10, 20, 30, 255}, {40, 50, 60, 255}, {70, 80, 90, 200}, {1, 2, 3, 128}};

class EngineInput : public ::testing::Test {
protected:
    EffectStage stage;
};

TEST_F(EngineInput, AnImageComesOutAsItWentInTopRowFirst) {
    const EffectPointer effect = stage.Make(2, 2, kCopyShader);
    SetImage(effect, 0, kCorners, 2, 2);
    EXPECT_EQ(RenderPixels(effect), kCorners);
}

TEST_F(EngineInput, TextureCoordinateZeroIsTheBottomLeft) {
    const EffectPointer effect = stage.Make(1, 1, "void main() { fragColor = Input0(vec2(0)); }");
    SetImage(effect, 0, kCorners, 2, 2);
    EXPECT_EQ(RenderPixels(effect), Pixels{kCorners[2]});
    // The plain sampler sees the same picture as the accessor.
    const EffectPointer plain =
        stage.Make(1, 1, "void main() { fragColor = texture(uInput0, vec2(0.25, 0.75)); }");
    SetImage(plain, 0, kCorners, 2, 2);
    EXPECT_EQ(RenderPixels(plain), Pixels{kCorners[0]});
}

TEST_F(EngineInput, OddSizesAndWideStridesAreReadRowByRow) {
    for (const auto& [width, height, stride] :
         {std::tuple{1, 1, 4}, {3, 5, 12}, {3, 5, 17}, {7, 2, 64}, {13, 11, 53}}) {
        SCOPED_TRACE(testing::Message() << width << " x " << height << ", stride " << stride);
        // Exactly the bytes that may be read: the sanitizer sees one too many.
        std::vector<uint8_t> bytes(static_cast<size_t>(stride) * (height - 1) + width * 4);
        Pixels expected;
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                const Pixel pixel{uint8_t(x * 7), uint8_t(y * 9), uint8_t(x + y), 255};
                expected.push_back(pixel);
                std::memcpy(&bytes[static_cast<size_t>(y) * stride + x * 4], &pixel, 4);
            }
        }
        const EffectPointer effect = stage.Make(width, height, kCopyShader);
        effect->SetInputImage(0, bytes.data(), width, height, stride, 4, false, 0);
        EXPECT_EQ(RenderPixels(effect), expected);
    }
}

TEST_F(EngineInput, AGreyImageIsGreyAndOpaque) {
    const EffectPointer effect = stage.Make(3, 2, kCopyShader);
    const uint8_t grey[] = {1, 2, 3, 4, 5, 6};
    effect->SetInputImage(0, grey, 3, 2, 3, 1, false, 0);
    const Pixels expected = {{1, 1, 1, 255}, {2, 2, 2, 255}, {3, 3, 3, 255},
                             {4, 4, 4, 255}, {5, 5, 5, 255}, {6, 6, 6, 255}};
    EXPECT_EQ(RenderPixels(effect), expected);
}

TEST_F(EngineInput, MaterialHasItsBottomRowFirstAndIsPremultiplied) {
    struct Case {
        const char* name;
        int step;
        std::vector<uint8_t> bytes;
        Pixels expected;  // 1 wide, 2 high, top row first
    };
    const Case cases[] = {
        {"grey", 1, {10, 20}, {{20, 20, 20, 255}, {10, 10, 10, 255}}},
        {"grey with alpha", 2, {10, 255, 200, 51}, {{40, 40, 40, 51}, {10, 10, 10, 255}}},
        {"BGR", 3, {1, 2, 3, 4, 5, 6}, {{4, 5, 6, 255}, {1, 2, 3, 255}}},
        {"BGRA", 4, {1, 2, 3, 255, 50, 100, 250, 51}, {{10, 20, 50, 51}, {1, 2, 3, 255}}},
        {"16 bits",
         8,
         {0, 1, 0, 2, 0, 3, 255, 255, 0, 0, 0, 0, 0, 0, 0, 0},
         {{0, 0, 0, 0}, {1, 2, 3, 255}}},
    };
    const EffectPointer effect = stage.Make(1, 2, kCopyShader);
    for (const Case& each : cases) {
        SCOPED_TRACE(each.name);
        effect->SetInputMaterial(0, each.bytes.data(), 1, 2, each.step, 4, false, 0, 0, 0);
        EXPECT_EQ(RenderPixels(effect), each.expected);
    }
}

TEST_F(EngineInput, MaterialRowsOfThreeBytesAreReadToTheirEndAndNoFurther) {
    std::vector<uint8_t> bytes(5 * 3 * 2);
    for (size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<uint8_t>(i * 3);
    const EffectPointer effect = stage.Make(5, 2, kCopyShader);
    effect->SetInputMaterial(0, bytes.data(), 5, 2, 15, 4, false, 0, 0, 0);
    const Pixels got = RenderPixels(effect);
    for (size_t x = 0; x < 5; ++x) {
        const uint8_t* bottom = &bytes[x * 3];
        const uint8_t* top = &bytes[15 + x * 3];
        EXPECT_EQ(got[x], (Pixel{top[0], top[1], top[2], 255}));
        EXPECT_EQ(got[5 + x], (Pixel{bottom[0], bottom[1], bottom[2], 255}));
    }
}

TEST_F(EngineInput, AnEmptyPictureLeavesTheSlotTransparentAndUnbound) {
    const EffectPointer effect = stage.Make(
        2, 1, "void main() { fragColor = vec4(HasInput0(), 0, 0, 1) + Input0(vTexCoord); }");
    EXPECT_EQ(RenderPixels(effect), Filled(2, kBlack)) << "never bound";
    const uint8_t white[] = {255, 255, 255, 255};
    struct Case {
        const char* name;
        const void* pixels;
        int cols, rows, step;
    };
    for (const Case& each : {Case{"null", nullptr, 1, 1, 4}, Case{"no columns", white, 0, 1, 4},
                             Case{"no rows", white, 1, 0, 4}, Case{"less", white, -1, -1, 4}}) {
        SCOPED_TRACE(each.name);
        effect->SetInputMaterial(0, white, 1, 1, 4, 4, false, 0, 0, 0);
        EXPECT_EQ(RenderPixels(effect), Filled(2, kWhite));
        effect->SetInputMaterial(0, each.pixels, each.cols, each.rows, each.step, 4, false, 0, 0,
                                 0);
        EXPECT_EQ(RenderPixels(effect), Filled(2, kBlack));
    }
}

TEST_F(EngineInput, BadPicturesAreReportedAndNotRead) {
    const EffectPointer effect = stage.Make(1, 1, kCopyShader);
    const uint8_t bytes[4] = {};
    const auto refused = [&](const char* what, auto set) {
        SCOPED_TRACE(what);
        EngineLogLines::Take();
        set();
        EXPECT_THAT(EngineLogLines::Take(), HasSubstr("input slot"));
        EXPECT_EQ(RenderPixels(effect), Filled(1, kNothing));
    };
    refused("rows shorter than the width",
            [&] { effect->SetInputImage(0, bytes, 2, 1, 4, 4, false, 0); });
    refused("unknown format", [&] { effect->SetInputImage(0, bytes, 1, 1, 4, 7, false, 0); });
    refused("unknown layout",
            [&] { effect->SetInputMaterial(0, bytes, 1, 1, 5, 4, false, 0, 0, 0); });
    refused("too wide", [&] { effect->SetInputImage(0, bytes, 1 << 20, 1, 1 << 22, 4, false, 0); });
    refused("no such slot", [&] { effect->SetInputImage(99, bytes, 1, 1, 4, 4, false, 0); });
    refused("slot below 0", [&] { effect->SetInputImage(-1, bytes, 1, 1, 4, 4, false, 0); });
}

TEST_F(EngineInput, ASlotKeepsItsPictureUntilAnotherIsSet) {
    const EffectPointer effect = stage.Make(1, 1, kCopyShader);
    SetImage(effect, 0, {kRed}, 1, 1);
    EXPECT_EQ(RenderPixels(effect), Pixels{kRed});
    EXPECT_EQ(RenderPixels(effect), Pixels{kRed});
    SetImage(effect, 0, Filled(6, kGreen), 3, 2);
    EXPECT_EQ(RenderPixels(effect), Pixels{kGreen}) << "another size";
    SetImage(effect, 0, Filled(6, kBlue), 3, 2);
    EXPECT_EQ(RenderPixels(effect), Pixels{kBlue}) << "the same size";
}

TEST_F(EngineInput, ClipsAreClampedAndMaterialRepeats) {
    const std::string shader = "void main() { fragColor = Input0(vec2(1.75, 0.5)); }";
    for (const bool clip : {true, false}) {
        const EffectPointer effect = stage.Make(1, 1, shader, "", [&](NLEOpenGLEngineEffect& it) {
            it.AddInputTexture(2, 1, 8, clip);
        });
        SetImage(effect, 0, {kRed, kGreen}, 2, 1);
        EXPECT_EQ(RenderPixels(effect), Pixels{kGreen});
        const EffectPointer left =
            stage.Make(1, 1, "void main() { fragColor = Input0(vec2(1.25, 0.5)); }", "",
                       [&](NLEOpenGLEngineEffect& it) { it.AddInputTexture(2, 1, 8, clip); });
        SetImage(left, 0, {kRed, kGreen}, 2, 1);
        EXPECT_EQ(RenderPixels(left), Pixels{clip ? kGreen : kRed});
    }
}

TEST_F(EngineInput, SlotsAreToldApartAndTheirSizesKnown) {
    const EffectPointer effect = stage.Make(
        1, 1,
        "void main() { fragColor = vec4(Input0Size().x, Input1Size().y, Input20(vec2(0)).b * 255.0,"
        " 255.0) / 255.0; }");
    SetImage(effect, 0, Filled(15, kRed), 5, 3);
    SetImage(effect, 1, Filled(14, kRed), 2, 7);
    SetImage(effect, 20, {{9, 0, 0, 255}}, 1, 1);
    EXPECT_EQ(RenderPixels(effect), (Pixels{{9, 7, 5, 255}}));
}

TEST_F(EngineInput, ATextureOfAnotherEffectIsReadAsItIs) {
    const EffectPointer source = stage.Make(2, 2, kCopyShader);
    SetImage(source, 0, kCorners, 2, 2);
    RenderInside(source);
    const EffectPointer effect = stage.Make(2, 2, kCopyShader);
    effect->SetInputTexture(0, source->GetResultFrame(), 2, 2, 8);
    EXPECT_EQ(RenderPixels(effect), kCorners);
    EXPECT_EQ(RenderPixels(effect), kCorners) << "bound for further passes";
}

TEST_F(EngineInput, ATextureThatIsGoneCountsAsNotBound) {
    EffectPointer source = stage.Make(2, 2, kColorShader);
    RenderInside(source);
    const EffectPointer effect =
        stage.Make(1, 1, "void main() { fragColor = vec4(HasInput0(), 0, 0, 1); }");
    effect->SetInputTexture(0, source->GetResultFrame(), 2, 2, 8);
    EXPECT_EQ(RenderPixels(effect), Pixels{kRed});
    source.reset();
    EXPECT_EQ(RenderPixels(effect), Pixels{kBlack});
}

}  // namespace
}  // namespace kelmo::test
