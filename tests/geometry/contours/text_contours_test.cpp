// SPDX-License-Identifier: GPL-3.0-or-later
#include <cmath>
#include <limits>

#include "geometry/contours/contours.h"
#include "scripted_text.h"

namespace kelmo::test {
namespace {

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();

void ExpectNear(const cv::Point2f& actual, const cv::Point2f& expected) {
    EXPECT_NEAR(actual.x, expected.x, 1e-5);
    EXPECT_NEAR(actual.y, expected.y, 1e-5);
}

ScriptedText OneBox() {
    ScriptedText text;
    text.paths.emplace_back().Box(25, 25, 75, 75);
    return text;
}

TEST(TextContours, ReadEveryKindOfSegment) {
    ScriptedText text;
    text.paths.emplace_back()
        .Add(kTextMoveTo, 0, 0)
        .Add(kTextLineTo, 100, 0)
        .Add(kTextQuadraticTo, 100, 50)
        .Add(kTextQuadraticTo, 50, 50)
        .Add(kTextCubicTo, 50, 100)
        .Add(kTextCubicTo, 0, 100)
        .Add(kTextCubicTo, 0, 0);
    Contours contours;
    contours.ParseTextPath(&text, 100, 100);
    ASSERT_EQ(contours.m_Paths.size(), 1u);
    ASSERT_EQ(contours.m_Paths[0].subPaths.size(), 1u);
    const std::vector<PathInfo>& paths = contours.m_Paths[0].subPaths[0];
    ASSERT_EQ(paths.size(), 3u);
    EXPECT_EQ(paths[0].type, kPathLine);
    ExpectNear(paths[0].start, {-1, 1});
    ExpectNear(paths[0].end, {1, 1});
    EXPECT_EQ(paths[0].control1, paths[0].start);
    EXPECT_EQ(paths[0].control2, paths[0].end);
    EXPECT_EQ(paths[1].type, kPathQuadratic);
    EXPECT_EQ(paths[1].start, paths[0].end);
    ExpectNear(paths[1].control1, {1, 0});
    ExpectNear(paths[1].end, {0, 0});
    EXPECT_EQ(paths[1].control2, paths[1].end);
    EXPECT_EQ(paths[2].type, kPathCubic);
    ExpectNear(paths[2].control1, {0, -1});
    ExpectNear(paths[2].control2, {-1, -1});
    ExpectNear(paths[2].end, {-1, 1});
    for (const PathInfo& path : paths) {
        EXPECT_TRUE(path.subdivide);
    }
}

struct PlaceCase {
    const char* name;
    int32_t frameWidth, frameHeight, canvas;
    float p, q;
    cv::Point2f center;      ///< of the text, m_TextCenter
    cv::Point2f boxTopLeft;  ///< of the group: with the anchor
    cv::Point2f first;       ///< point: without the anchor
};

TEST(TextContours, PlaceTheCanvasInTheFrame) {
    const PlaceCase cases[] = {
        {"canvas of the frame's size",
         100,
         100,
         100,
         0.2f,
         0.9f,
         {0, 0},
         {-0.5f, 0.5f},
         {-0.5f, 0.5f}},
        {"in the middle", 200, 100, 100, 0.5f, 0.5f, {0, 0}, {-0.5f, 0.5f}, {-0.5f, 0.5f}},
        {"to the left and down",
         200,
         100,
         100,
         0.25f,
         1,
         {-0.5f, 1},
         {-1.5f, -0.5f},
         {-0.5f, 0.5f}},
        // Half of 101 is 50: the text stands half a pixel off the middle.
        {"odd canvas", 200, 100, 101, 0.5f, 0.5f, {0, 0}, {-0.5f, 0.5f}, {-0.5f, 0.5f}},
    };
    for (const PlaceCase& c : cases) {
        SCOPED_TRACE(c.name);
        ScriptedText text = OneBox();
        text.width = text.height = c.canvas;
        text.p = c.p;
        text.q = c.q;
        Contours contours;
        contours.ParseTextPath(&text, c.frameWidth, c.frameHeight);
        const ContourPath& group = contours.m_Paths.at(0);
        ExpectNear(contours.m_TextCenter, c.center);
        ExpectNear({group.minX, group.maxY}, c.boxTopLeft);
        ExpectNear({group.maxX, group.minY}, c.boxTopLeft + cv::Point2f(1, -1));
        ExpectNear(group.subPaths.at(0).at(0).start, c.first);
        EXPECT_EQ(contours.m_TextOrigin, cv::Point2f(3, 4));
    }
}

TEST(TextContours, TurnPointsButNotBoxesByTheAngle) {
    ScriptedText text = OneBox();
    text.angle = 90;
    Contours contours;
    contours.ParseTextPath(&text, 100, 100);
    EXPECT_EQ(contours.m_TextAngle, 90);
    // (-0.5, 0.5) a quarter turn counter-clockwise.
    ExpectNear(contours.m_Paths[0].subPaths[0][0].start, {-0.5f, -0.5f});
    ExpectNear({contours.m_Paths[0].minX, contours.m_Paths[0].maxY}, {-0.5f, 0.5f});
}

TEST(TextContours, BoundIsTheBoxOfAllGroupsInTruncatedPixels) {
    ScriptedText text;
    text.paths.emplace_back().Box(10, 20, 30, 40);
    text.paths.emplace_back();
    text.paths.emplace_back().Box(50, 60, 80.5f, 90.5f);
    Contours contours;
    contours.ParseTextPath(&text, 100, 100);
    ASSERT_EQ(contours.m_Paths.size(), 2u) << "an empty path is no group";
    EXPECT_NEAR(contours.m_Bound.x, 10, 1);
    EXPECT_NEAR(contours.m_Bound.y, 20, 1);
    EXPECT_NEAR(contours.m_Bound.width, 70, 1);
    EXPECT_NEAR(contours.m_Bound.height, 70, 1);

    // Without any point the box is inside out.
    ScriptedText empty;
    contours.ParseTextPath(&empty, 100, 100);
    EXPECT_TRUE(contours.m_Paths.empty());
    EXPECT_EQ(contours.m_Bound, cv::Rect(100, 100, -100, -100));
}

TEST(TextContours, ReadDecoration) {
    ScriptedText text = OneBox();
    text.box = {0, 0, 100, 0, 100, 100, 0, 100};
    text.rects = {{0, 90, 100, 90, 100, 100, 0, 100}, {50, 50, 60, 50, 60, 60, 50, 60}};
    for (const bool hasBox : {true, false}) {
        SCOPED_TRACE(hasBox ? "with box" : "without box");
        text.hasDecoration = true;
        text.hasBox = hasBox;
        Contours contours;
        contours.ParseTextPath(&text, 200, 100);
        EXPECT_TRUE(contours.m_HasDecoration);
        EXPECT_EQ(contours.m_BoxValid, hasBox);
        if (hasBox) {
            ExpectNear(contours.m_BoxCorners[0], {-1, 1});
            ExpectNear(contours.m_BoxCorners[2], {1, -1});
            EXPECT_EQ(contours.m_BoxColor, 0x11223344u);
        }
        EXPECT_EQ(contours.m_RectCount, 2);
        EXPECT_EQ(contours.m_RectColor, 0x55667788u);
        ASSERT_EQ(contours.m_Rects.size(), 16u);
        ExpectNear({contours.m_Rects[0], contours.m_Rects[1]}, {-1, -0.8f});
        ExpectNear({contours.m_Rects[12], contours.m_Rects[13]}, {0.2f, -0.2f});

        text.hasDecoration = false;
        contours.ParseTextPath(&text, 200, 100);
        EXPECT_FALSE(contours.m_HasDecoration);
        EXPECT_FALSE(contours.m_BoxValid);
    }
    text.hasDecoration = true;
    text.rects.resize(5000);
    Contours contours;
    contours.ParseTextPath(&text, 200, 100);
    EXPECT_EQ(contours.m_RectCount, 4096) << "no host says how many rects we hold";
}

TEST(TextContours, DecorationAndPlaceAreFinite) {
    for (const float wrong : {kNan, kInfinity, -3e38f}) {
        SCOPED_TRACE(wrong);
        ScriptedText text = OneBox();
        text.hasDecoration = text.hasBox = true;
        text.box = {0, 0, 100, 0, 100, wrong, 0, 100};
        text.rects = {{0, 90, 100, 90, 100, 100, wrong, 100}, {50, 50, 60, 50, 60, 60, 50, 60}};
        if (!std::isfinite(wrong)) text.angle = text.p = text.origin[1] = wrong;
        Contours contours;
        contours.ParseTextPath(&text, 200, 100);
        EXPECT_TRUE(contours.m_HasDecoration);
        EXPECT_FALSE(contours.m_BoxValid);
        ASSERT_EQ(contours.m_Rects.size(), 16u);
        for (int i = 0; i < 8; ++i) EXPECT_EQ(contours.m_Rects[i], 0);
        ExpectNear({contours.m_Rects[12], contours.m_Rects[13]}, {0.2f, -0.2f});
        EXPECT_EQ(contours.m_TextAngle, 0);
        EXPECT_EQ(contours.m_TextCenter, cv::Point2f());
        EXPECT_TRUE(std::isfinite(contours.m_TextOrigin.y));
        EXPECT_EQ(contours.m_Paths.at(0).subPaths.size(), 1u);
    }
}

TEST(TextContours, ReachAsFarForTheirBoxAsForTheirOutline) {
    ScriptedText
        text;  // 0.9e6 half heights from the middle in x and y, more in one of them once turned
    text.paths.emplace_back().Box(25, 25, 75, 75).Box(-45e6f, -45e6f, 45e6f, 45e6f);
    for (const float angle : {0.0f, 45.0f}) {
        text.angle = angle;
        Contours contours;
        contours.ParseTextPath(&text, 100, 100);
        const ContourPath& group = contours.m_Paths.at(0);
        const bool isWithin = angle == 0;
        EXPECT_EQ(group.subPaths.size(), isWithin ? 2u : 1u);
        EXPECT_EQ(group.minY < -1e5f, isWithin) << "the box is that of the outline";
    }
}

struct BrokenCase {
    const char* name;
    ScriptedText::Stream stream;
    std::vector<size_t> segments;  ///< of each sub-contour that is left
};

TEST(TextContours, GetOverWhatAHostShouldNotSend) {
    using Stream = ScriptedText::Stream;
    const BrokenCase cases[] = {
        {"points of unknown type", Stream().Add(7, 1, 1).Box(0, 0, 9, 9).Add(255, 2, 2), {4}},
        {"a line before the first move",
         Stream().Add(kTextLineTo, 1, 1).Add(kTextLineTo, 5, 1),
         {2}},
        {"moves alone", Stream().Add(kTextMoveTo, 1, 1).Add(kTextMoveTo, 2, 2), {}},
        {"a cubic cut short",
         Stream().Box(0, 0, 9, 9).Add(kTextCubicTo, 1, 1).Add(kTextCubicTo, 2, 2),
         {4}},
        {"a quadratic cut short", Stream().Box(0, 0, 9, 9).Add(kTextQuadraticTo, 1, 1), {4}},
        {"NaN drops its sub-contour alone",
         Stream().Box(0, 0, 9, 9).Box(0, kNan, 9, 9).Box(1, 1, 5, 5),
         {4, 4}},
        {"infinity as well", Stream().Box(0, 0, kInfinity, 9).Box(1, 1, 5, 5), {4}},
        {"out of all reach", Stream().Box(0, 0, 3e38f, 9).Box(1, 1, 5, 5), {4}},
        {"NaN in a control point",
         Stream()
             .Add(kTextMoveTo, 0, 0)
             .Add(kTextQuadraticTo, kNan, 0)
             .Add(kTextQuadraticTo, 1, 1)
             .Box(1, 1, 5, 5),
         {4}},
    };
    for (const BrokenCase& c : cases) {
        SCOPED_TRACE(c.name);
        ScriptedText text;
        text.paths.push_back(c.stream);
        Contours contours;
        contours.ParseTextPath(&text, 100, 100);
        ASSERT_EQ(contours.m_Paths.size(), 1u);
        const ContourPath& group = contours.m_Paths[0];
        std::vector<size_t> segments;
        for (const auto& subPath : group.subPaths) {
            segments.push_back(subPath.size());
        }
        EXPECT_EQ(segments, c.segments);
        EXPECT_TRUE(std::isfinite(group.maxX - group.minX) && group.maxX >= group.minX);
    }
}

TEST(TextContours, StayAsTheyAreWithoutTextOrFrame) {
    ScriptedText text = OneBox();
    Contours contours;
    contours.ParseTextPath(&text, 100, 100);
    ScriptedText other;
    contours.ParseTextPath(nullptr, 100, 100);
    contours.ParseTextPath(&other, 0, 100);
    contours.ParseTextPath(&other, 100, -1);
    EXPECT_EQ(contours.m_Paths.size(), 1u);
}

TEST(TextContours, TakeAHundredThousandPoints) {
    ScriptedText text;
    auto& stream = text.paths.emplace_back().Add(kTextMoveTo, 50, 0);
    for (int i = 1; i < 100000; ++i) {
        stream.Add(kTextLineTo, 50 + 50 * std::sin(i * 1e-4f), 50 - 50 * std::cos(i * 1e-4f));
    }
    Contours contours;
    contours.ParseTextPath(&text, 100, 100);
    contours.FlattenPaths(0.01f, true);
    EXPECT_EQ(contours.m_Points.at(0).at(0).size(), 99999u);
}

}  // namespace
}  // namespace kelmo::test
