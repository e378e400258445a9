// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/material/picture_compare.h"

#include <gmock/gmock.h>

#include <cmath>
#include <filesystem>

#include "tests/material/test_pictures.h"

namespace kelmo::test {
namespace {

using testing::AllOf;
using testing::HasSubstr;

Picture Grey(int width, int height, uint8_t value) {
    Picture picture;
    picture.Resize(width, height);
    std::fill(picture.pixels.begin(), picture.pixels.end(), value);
    for (size_t i = 3; i < picture.pixels.size(); i += 4) picture.pixels[i] = 255;
    return picture;
}

TEST(Compare, FindsTheWorstPixelAndMeasuresTheRest) {
    const Picture expected = Grey(4, 2, 100);
    Picture got = expected;
    EXPECT_TRUE(std::isinf(Compare(expected, got).psnr));
    EXPECT_EQ(Compare(expected, got).worst, 0);

    got.Row(1)[2 * 4 + 1] = 110;  // green of (2, 1)
    got.Row(0)[0] = 99;
    const Comparison c = Compare(expected, got, 5);
    EXPECT_EQ(c.worst, 10);
    EXPECT_EQ(c.x, 2);
    EXPECT_EQ(c.y, 1);
    EXPECT_EQ(c.expected, (Pixel{100, 100, 100, 255}));
    EXPECT_EQ(c.got, (Pixel{100, 110, 100, 255}));
    EXPECT_DOUBLE_EQ(c.share, 1.0 / 8.0);
    // 101 squares over 32 channels.
    EXPECT_NEAR(c.psnr, 10.0 * std::log10(255.0 * 255.0 * 32.0 / 101.0), 1e-9);
    EXPECT_DOUBLE_EQ(Compare(expected, got, 0).share, 2.0 / 8.0);
    EXPECT_THROW(Compare(expected, Grey(2, 4, 100)), std::invalid_argument);
}

TEST(LooksLike, FailsWithTheNumbersAndThreeFiles) {
    const Picture expected = Grey(16, 16, 100);
    Picture got = expected;
    got.Row(3)[5 * 4 + 2] = 255;
    EXPECT_TRUE(LooksLike(expected, got, "one_off"));
    EXPECT_FALSE(LooksLike(expected, got, "one_off", {34, 24, 0.0})) << "no pixel may be off";
    EXPECT_FALSE(LooksLike(expected, Grey(16, 16, 108), "all_off")) << "by little each";
    const std::string message(LooksLike(expected, Grey(16, 16, 140), "all_off").message());
    EXPECT_THAT(message, AllOf(HasSubstr("(0, 0)"), HasSubstr("off by 40"), HasSubstr("all_off")));
    const std::string stem = KELMO_TEST_OUTPUT_DIR "/material/all_off-";
    EXPECT_TRUE(Equals(ReadPng(stem + "expected.png"), expected, 0, "reread"));
    EXPECT_TRUE(Equals(ReadPng(stem + "got.png"), Grey(16, 16, 140), 0, "reread"));
    EXPECT_TRUE(Equals(ReadPng(stem + "difference.png"), Grey(16, 16, 255), 0, "reread"));
    EXPECT_THAT(LooksLike(expected, Grey(8, 8, 100), "size").message(), HasSubstr("got 8x8"));
}

TEST(Equals, LooksAtTheWorstPixelAlone) {
    const Picture expected = Grey(4, 4, 100);
    EXPECT_TRUE(Equals(expected, Grey(4, 4, 101), 1, "equals"));
    EXPECT_FALSE(Equals(expected, Grey(4, 4, 102), 1, "equals"));
}

TEST(IsPremultiplied, FindsColourBrighterThanItsAlpha) {
    Picture picture = Grey(3, 3, 200);
    EXPECT_TRUE(IsPremultiplied(picture));
    picture.Row(2)[1 * 4 + 3] = 199;
    const auto result = IsPremultiplied(picture);
    EXPECT_FALSE(result);
    EXPECT_THAT(result.message(), HasSubstr("(1, 2)"));
}

TEST(IsFlat, AllowsLittleNoise) {
    Picture picture = Grey(3, 3, 200);
    picture.Row(1)[4] = 203;
    EXPECT_TRUE(IsFlat(picture));
    picture.Row(1)[4] = 205;
    EXPECT_FALSE(IsFlat(picture));
}

TEST(Png, KeepsAPremultipliedPictureWithinARounding) {
    std::filesystem::create_directories(KELMO_TEST_OUTPUT_DIR "/material");
    const std::string path = KELMO_TEST_OUTPUT_DIR "/material/card.png";
    const Picture card = TestCard(64, 36);
    WritePng(path, card);
    EXPECT_TRUE(Equals(card, ReadPng(path), 1, "reread"));
    EXPECT_THROW(ReadPng(KELMO_SOURCE_DIR "/README.md"), std::runtime_error);
    EXPECT_THROW(ReadPng("/no/such.png"), std::runtime_error);
}

TEST(TestPictures, ArePremultipliedAndDifferFromEachOther) {
    const Picture pictures[] = {TestCard(64, 36), Landscape(64, 36), NoisyLandscape(64, 36),
                                City(64, 36), Clear(64, 36)};
    for (const Picture& a : pictures) {
        EXPECT_TRUE(IsPremultiplied(a));
        for (const Picture& b : pictures) {
            if (&a == &b) continue;
            EXPECT_LT(Compare(a, b).psnr, 30.0);
        }
    }
}

}  // namespace
}  // namespace kelmo::test
