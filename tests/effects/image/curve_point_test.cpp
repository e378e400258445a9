// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/image/curve_point.h"

#include <gtest/gtest.h>

#include <string>

namespace kelmo {
namespace {

CurvePoints Parse(const std::string& text) {
    CurvePoints points = {{9.0, 9.0}};
    ParseCurveText(text, points);
    return points;
}

TEST(CurveText, GivesThePointsThatItCanRead) {
    struct Case {
        const char* name;
        std::string text;
        std::size_t points;
    };
    const Case cases[] = {
        {"two knots", R"([{"_time":0,"_value":0.25},{"_time":1,"_value":1}])", 2},
        {"an element without a value is skipped", R"([{"_time":0},{"_time":1,"_value":1}])", 1},
        {"a text for a number is skipped", R"([{"_time":"0","_value":1},{"_time":1,"_value":1}])",
         1},
        {"elements that are no objects are skipped", R"([1,null,"x",{"_time":1,"_value":1}])", 1},
        {"an object is no list", R"({"_time":0,"_value":0})", 0},
        {"broken JSON", R"([{"_time":0,)", 0},
        {"a number that no double holds", R"([{"_time":1e999,"_value":0}])", 0},
        {"NaN is no JSON", R"([{"_time":NaN,"_value":0}])", 0},
        {"nested without end", std::string(100000, '['), 0},
        {"nothing but space", " ", 0},
    };
    for (const Case& c : cases) EXPECT_EQ(Parse(c.text).size(), c.points) << c.name;
    EXPECT_EQ(Parse("").size(), 1U) << "an empty text leaves the points alone";
    EXPECT_EQ(Parse(R"([{"_time":0.5,"_value":-2}])").at(0).y, -2.0);
}

TEST(CurveControls, OfTwoKnotsLieAtTheThirds) {
    CurvePoints first;
    CurvePoints second;
    ComputeControlPoints({{0.0, 0.0}, {1.0, 1.0}}, first, second);
    ASSERT_EQ(first.size(), 1U);
    EXPECT_DOUBLE_EQ(first[0].x, 1.0 / 3.0);
    EXPECT_DOUBLE_EQ(second[0].y, 2.0 / 3.0);
}

double At(double a, double b, double c, double d, double t) {
    const double u = 1.0 - t;
    return u * u * u * a + 3.0 * u * u * t * b + 3.0 * u * t * t * c + t * t * t * d;
}

// The defining properties of the chain, told by differences of the curve itself.
TEST(CurveControls, MakeAChainWithoutBreaksInSlopeAndBend) {
    const CurvePoints knots = {{0, 0}, {0.1, 0.4}, {0.35, 0.3}, {0.5, 0.9}, {0.8, 0.2}, {1, 1}};
    CurvePoints f;
    CurvePoints s;
    ComputeControlPoints(knots, f, s);
    ASSERT_EQ(f.size(), knots.size() - 1);
    const auto slopeEnd = [&](std::size_t i) { return 3.0 * (knots[i + 1].y - s[i].y); };
    const auto slopeStart = [&](std::size_t i) { return 3.0 * (f[i].y - knots[i].y); };
    const auto bendEnd = [&](std::size_t i) { return knots[i + 1].y - 2.0 * s[i].y + f[i].y; };
    const auto bendStart = [&](std::size_t i) { return s[i].y - 2.0 * f[i].y + knots[i].y; };
    for (std::size_t i = 0; i + 1 < f.size(); ++i) {
        EXPECT_NEAR(slopeEnd(i), slopeStart(i + 1), 1e-12) << i;
        EXPECT_NEAR(bendEnd(i), bendStart(i + 1), 1e-12) << i;
    }
    EXPECT_NEAR(bendStart(0), 0.0, 1e-12) << "free start";
    EXPECT_NEAR(bendEnd(f.size() - 1), 0.0, 1e-12) << "free end";
    EXPECT_NEAR(At(knots[2].y, f[2].y, s[2].y, knots[3].y, 1.0), knots[3].y, 1e-12);
}

TEST(CurveControls, OfFewerThanTwoKnotsAreLeftAlone) {
    CurvePoints first(3);
    CurvePoints second(3);
    ComputeControlPoints({{0.0, 0.0}}, first, second);
    EXPECT_EQ(first.size(), 3U);
}

TEST(SameCurve, IsBlindToStepsBelowABillionth) {
    const CurvePoints base = {{0.0, 0.0}, {1.0, 1.0}};
    CurvePoints moved = base;
    moved[1].y += 0.9e-9;
    EXPECT_TRUE(SameCurve(base, moved));
    moved[1].y = 1.0 + 1.1e-9;
    EXPECT_FALSE(SameCurve(base, moved));
    EXPECT_FALSE(SameCurve(base, {{0.0, 0.0}}));
}

}  // namespace
}  // namespace kelmo
