// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/session/text_values.h"

#include <gtest/gtest.h>

#include "host/session/suggestion.h"

namespace kelmo::host {
namespace {

TEST(TextValues, NumbersAreWholeTextsAndFinite) {
    EXPECT_EQ(ParseNumber("-1.5"), -1.5);
    EXPECT_EQ(ParseNumber("+2"), 2.0);
    EXPECT_EQ(ParseNumber("1e3"), 1000.0);
    for (const char* bad : {"", " 1", "1 ", "1,5", "inf", "nan", "0x10", "1e999", "--1", "+"}) {
        EXPECT_FALSE(ParseNumber(bad)) << bad;
    }
}

TEST(TextValues, SwitchesHaveWordsAndDigits) {
    for (const char* yes : {"true", "On", "YES", "1"}) EXPECT_EQ(ParseSwitch(yes), true) << yes;
    for (const char* no : {"false", "off", "No", "0"}) EXPECT_EQ(ParseSwitch(no), false) << no;
    for (const char* bad : {"", "2", "maybe", "tru"}) EXPECT_FALSE(ParseSwitch(bad)) << bad;
}

TEST(TextValues, ColoursComeInFourForms) {
    EXPECT_EQ(ParseColor("#12aBcD"), 0x12ABCD);
    EXPECT_EQ(ParseColor("0x12ABCD"), 0x12ABCD);
    EXPECT_EQ(ParseColor("#1af"), 0x11AAFF);
    EXPECT_EQ(ParseColor("Orange"), 0xFFA500);
    for (const char* bad :
         {"", "#", "#12345", "#1234567", "12ABCD", "0x123", "#GGGGGG", "rde", "#-12345", "0x"}) {
        EXPECT_FALSE(ParseColor(bad)) << bad;
    }
    EXPECT_EQ(ColorText(0x00FF08), "#00FF08");
}

struct MomentCase {
    const char* text;
    double frame;  // at 25 frames a second in 101 frames
};

TEST(TextValues, MomentsBecomeFrames) {
    for (const MomentCase& c : std::vector<MomentCase>{{"2", 50},
                                                       {"2s", 50},
                                                       {"500ms", 12.5},
                                                       {"50f", 50},
                                                       {"0%", 0},
                                                       {"50%", 50},
                                                       {"100%", 100},
                                                       {"1:30", 2250},
                                                       {"1:00:00.5", 90012.5}}) {
        const std::optional<Moment> moment = ParseMoment(c.text);
        ASSERT_TRUE(moment) << c.text;
        EXPECT_DOUBLE_EQ(moment->InFrames({25, 1}, 101), c.frame) << c.text;
    }
    for (const char* bad : {"", "s", "%", "-1", "2x", "1:60", "1:2:3:4", "1.5:00", "1:", "2 s"}) {
        EXPECT_FALSE(ParseMoment(bad)) << bad;
    }
}

TEST(TextValues, PercentOfASingleFrameIsThatFrame) {
    EXPECT_EQ(ParseMoment("100%")->InFrames({25, 1}, 1), 0);
    EXPECT_EQ(ParseMoment("50%")->InFrames({25, 1}, 0), 0);
}

TEST(TextValues, SizesAreTwoPositiveNumbers) {
    const std::optional<PixelSize> size = ParseSize("1280x720");
    ASSERT_TRUE(size);
    EXPECT_EQ(size->width, 1280);
    EXPECT_EQ(size->height, 720);
    for (const char* bad :
         {"", "1280", "x", "0x10", "10x0", "-1x5", "1x2x3", "1280X720", "99999999999x1", "1.5x2"}) {
        EXPECT_FALSE(ParseSize(bad)) << bad;
    }
}

struct RateCase {
    const char* text;
    int numerator;
    int denominator;
};

TEST(TextValues, DecimalBroadcastRatesBecomeExact) {
    for (const RateCase& c : std::vector<RateCase>{{"25", 25, 1},
                                                   {"30000/1001", 30000, 1001},
                                                   {"29.97", 30000, 1001},
                                                   {"23.976", 24000, 1001},
                                                   {"59.94", 60000, 1001},
                                                   {"12.5", 25, 2},
                                                   {"29.5", 59, 2}}) {
        const std::optional<FrameRate> rate = ParseFrameRate(c.text);
        ASSERT_TRUE(rate) << c.text;
        EXPECT_EQ(rate->numerator, c.numerator) << c.text;
        EXPECT_EQ(rate->denominator, c.denominator) << c.text;
    }
    for (const char* bad : {"", "0", "-25", "25/0", "0/1", "1/2/3", "fast", "1e9"}) {
        EXPECT_FALSE(ParseFrameRate(bad)) << bad;
    }
}

TEST(Suggestion, DistanceCountsSwapsAsOne) {
    EXPECT_EQ(EditDistance("", ""), 0);
    EXPECT_EQ(EditDistance("amount", "Amount"), 0);
    EXPECT_EQ(EditDistance("amuont", "amount"), 1);
    EXPECT_EQ(EditDistance("amont", "amount"), 1);
    EXPECT_EQ(EditDistance("kitten", "sitting"), 3);
    EXPECT_EQ(EditDistance("", "abc"), 3);
}

TEST(Suggestion, OnlyNearNamesAreSuggested) {
    const std::vector<std::string> names = {"amount", "count", "strength"};
    EXPECT_EQ(NearestName("amuont", names), "amount");
    EXPECT_EQ(NearestName("stren", names), "strength");
    EXPECT_EQ(NearestName("gth", names), "strength");
    EXPECT_EQ(NearestName("Wings Sticker", {"Wing", "Angel Wings Sticker"}), "Angel Wings Sticker");
    EXPECT_EQ(NearestName("zzz", names), "");
    EXPECT_EQ(NearestName("a", {}), "");
    EXPECT_EQ(DidYouMean("cuont", names), "; did you mean \"count\"?");
    EXPECT_EQ(DidYouMean("xyzxyz", names), "");
}

}  // namespace
}  // namespace kelmo::host
