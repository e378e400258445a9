// SPDX-License-Identifier: GPL-3.0-or-later
#include "geometry/contours/contour_face.h"

#include <opencv2/imgproc.hpp>

#include "host/text/host_text_path.h"
#include "scripted_text.h"

namespace kelmo::test {
namespace {

using Polyline = std::vector<cv::Point2f>;

/// A box with its points clockwise (y up), or turned: a hole.
Polyline Box(float left, float bottom, float right, float top, bool turned = false) {
    Polyline box{{left, bottom}, {left, top}, {right, top}, {right, bottom}};
    if (turned) {
        std::reverse(box.begin(), box.end());
    }
    return box;
}

void Parse(Contours& contours, std::vector<std::vector<Polyline>> groups, bool grid = false,
           int rows = 0, int cols = 0) {
    contours.m_Points = std::move(groups);
    ContourFace().ParseContours(contours, grid, rows, cols);
}

double Twice(const Triangle2f& t) {
    return double(t.b.x - t.a.x) * (t.c.y - t.a.y) - double(t.b.y - t.a.y) * (t.c.x - t.a.x);
}

double Area(const std::vector<Triangle2f>& triangles) {
    double area = 0;
    for (const Triangle2f& t : triangles) {
        area += std::abs(Twice(t)) / 2;
    }
    return area;
}

struct FaceCase {
    const char* name;
    std::vector<Polyline> group;
    double area;
};

TEST(ContourFace, FillsOuterContoursAndSparesHoles) {
    const Polyline outer = Box(0, 0, 10, 10);
    const Polyline hole = Box(2, 2, 8, 8, true);
    const Polyline island = Box(4, 4, 6, 6);
    const FaceCase cases[] = {
        {"nothing", {}, 0},
        {"an empty sub-contour", {{}}, 0},
        {"one point, a line", {{{1, 1}}, {{1, 1}, {2, 2}}}, 0},
        {"a box", {outer}, 100},
        {"a box with a hole", {outer, hole}, 64},
        {"the hole first", {hole, outer}, 64},
        {"an island in the hole", {outer, hole, island}, 68},
        {"two boxes, each with a hole",
         {Box(0, 0, 4, 4), Box(1, 1, 3, 3, true), Box(6, 0, 10, 4), Box(7, 1, 9, 3, true)},
         24},
        {"a hole on its own is no face", {hole}, 0},
        {"a hole beside the contour is left out", {Box(0, 0, 1, 1), hole}, 1},
    };
    for (const FaceCase& c : cases) {
        SCOPED_TRACE(c.name);
        Contours contours;
        Parse(contours, {c.group});
        ASSERT_EQ(contours.m_Triangles.size(), 1u);
        EXPECT_NEAR(Area(contours.m_Triangles[0]), c.area, 1e-4);
        ASSERT_EQ(contours.m_GroupRects.size(), 1u);
        ASSERT_EQ(contours.m_EdgeCores.size(), 1u);
        ASSERT_EQ(contours.m_EdgeCores[0].size(), c.group.size());
        for (size_t sub = 0; sub < c.group.size(); ++sub) {
            EXPECT_EQ(contours.m_EdgeCores[0][sub].size(), c.group[sub].size());
        }
        for (const Triangle2f& t : contours.m_Triangles[0]) {
            EXPECT_LE(Twice(t), 0) << "all triangles run clockwise";
        }
    }
}

TEST(ContourFace, OffsetDirectionsPointIntoTheMaterial) {
    Contours contours;
    Parse(contours, {{Box(0, 0, 10, 10), Box(2, 2, 8, 8, true)}});
    const auto& cores = contours.m_EdgeCores.at(0);
    EXPECT_EQ(cores.at(0).at(0).dir, cv::Point2f(1, 1)) << "from (0, 0) inwards";
    EXPECT_EQ(cores.at(1).at(3).dir, cv::Point2f(-1, -1)) << "from (2, 2) outwards";
}

TEST(ContourFace, MeasuresGroupsByTheLongerSideOfTheUprightBox) {
    Contours contours;
    Parse(contours, {{Box(0, 0, 10, 4)}, {}, {Box(20, 0, 21, 3)}});
    ASSERT_EQ(contours.m_Triangles.size(), 3u);
    ASSERT_EQ(contours.m_GroupRects.size(), 3u);
    EXPECT_NEAR(contours.m_MaxGroupSize, 10, 1e-4);
    EXPECT_NEAR(contours.m_MinGroupSize, 3, 1e-4) << "a group without points does not count";
    EXPECT_NEAR(contours.m_AllRect.center.x, 10.5, 1e-4);

    Contours none;
    Parse(none, {});
    EXPECT_EQ(none.m_MinGroupSize, std::numeric_limits<float>::max());
    EXPECT_EQ(none.m_AllRect.size, cv::Size2f());
}

TEST(ContourFace, GridPutsPointsInsideTheFace) {
    Contours plain;
    Parse(plain, {{Box(0, 0, 10, 10), Box(4, 4, 6, 6, true)}});
    Contours gridded;
    Parse(gridded, {{Box(0, 0, 10, 10), Box(4, 4, 6, 6, true)}}, true, 10, 10);
    EXPECT_GT(gridded.m_Triangles[0].size(), plain.m_Triangles[0].size() + 40);
    EXPECT_NEAR(Area(gridded.m_Triangles[0]), 96, 1e-3);
    for (const Triangle2f& t : gridded.m_Triangles[0]) {
        for (const cv::Point2f& p : {t.a, t.b, t.c}) {
            EXPECT_LE(std::max(std::abs(p.x - 5), std::abs(p.y - 5)), 5);
        }
    }
    Contours none;
    Parse(none, {{Box(0, 0, 10, 10)}}, true, 0, -3);
    EXPECT_NEAR(Area(none.m_Triangles[0]), 100, 1e-4);
    // A column of rows beyond all measure: all but the row on the border make two triangles more.
    Contours many;
    Parse(many, {{Box(0, 0, 10, 10)}}, true, std::numeric_limits<int32_t>::max(), 2);
    EXPECT_EQ(many.m_Triangles[0].size(), 2 + 2 * (ContourFace::kMaxGridSide - 1u));
}

// Each contour passes every second point over and leaves it to the contours behind. Two triangles a
// point: the first takes 5 of 9 in 7 columns, the second 4 in 2 columns and 2 in the 7 between.
TEST(ContourFace, ContoursShareTheGridInTheirOrder) {
    Contours contours;
    Parse(contours, {{Box(1, 0, 9, 10), Box(0, 1, 10, 9), Box(4, 4, 6, 6)}}, true, 10, 10);
    EXPECT_EQ(contours.m_Triangles[0].size(), 2u + 2 * 35 + 2 + 2 * 22 + 2);
}

TEST(ContourFace, LettersHaveTheirHolesAndIslands) {
    ScriptedText text;
    text.paths.emplace_back().Box(10, 10, 90, 90).Box(30, 30, 70, 70, true);
    Contours contours;
    contours.ParseTextPath(&text, 100, 100);
    contours.FlattenPaths(0.01f, true);
    ContourFace().ParseContours(contours, false, 0, 0);
    EXPECT_NEAR(Area(contours.m_Triangles.at(0)), 1.6 * 1.6 - 0.8 * 0.8, 1e-4);

    cv::Mat mask(100, 100, CV_8UC4, cv::Scalar(0, 0, 0, 255));
    cv::rectangle(mask, cv::Rect(10, 10, 80, 80), cv::Scalar::all(255), cv::FILLED);
    cv::rectangle(mask, cv::Rect(30, 30, 40, 40), cv::Scalar(0, 0, 0, 255), cv::FILLED);
    ASSERT_TRUE(contours.ParseMask(mask, 100, 100, 0.01f, 20, false, true));
    contours.FlattenPaths(0.01f, true);
    ContourFace().ParseContours(contours, false, 0, 0);
    EXPECT_NEAR(Area(contours.m_Triangles.at(0)), 1.6 * 1.6 - 0.8 * 0.8, 1e-3);
}

/// The area of the faces in square pixels.
double InkOf(TextPath& text, int width, int height) {
    Contours contours;
    contours.ParseTextPath(&text, width, height);
    contours.FlattenPaths(0.02f, false);
    ContourFace().ParseContours(contours, false, 0, 0);
    double area = 0;
    for (const auto& triangles : contours.m_Triangles) {
        area += Area(triangles);
    }
    return area * height * height / 4;
}

/// The same by the outlines alone.
double OutlineInk(TextPath& text, int width, int height) {
    Contours contours;
    contours.ParseTextPath(&text, width, height);
    contours.FlattenPaths(0.02f, false);
    double area = 0;
    for (const auto& group : contours.m_Points) {
        for (const Polyline& p : group) {
            for (size_t i = 0; i < p.size(); ++i) {
                const cv::Point2f& next = p[(i + 1) % p.size()];
                area += double(next.y + p[i].y) * (next.x - p[i].x) / 2;
            }
        }
    }
    return area * height * height / 4;
}

// Outlines of TrueType run the one way, those of PostScript the other: both must come out filled.
TEST(ContourFace, FillsTextOfTheHost) {
    for (const char* words : {"Ogre & 8", "مرحبا", "漢字"}) {
        SCOPED_TRACE(words);
        host::TextSettings settings;
        settings.text = words;
        std::string missing;
        const auto text = host::HostTextPath::Create(
            settings, [&](const std::string& warning) { missing = warning; });
        if (!missing.empty()) {
            GTEST_SKIP() << "no installed font has this text: " << missing;
        }
        const double expected = OutlineInk(*text, 640, 360);
        EXPECT_GT(expected, 1000) << "outer contours are clockwise";
        EXPECT_NEAR(InkOf(*text, 640, 360), expected, 0.02 * expected);
    }
}

/// Rings of 40 to 80 points in rows.
std::vector<std::vector<Polyline>> ManyRings() {
    std::vector<std::vector<Polyline>> groups;
    for (int i = 0; i < 40; ++i) {
        const cv::Point2f center(static_cast<float>(i % 8) * 3, static_cast<float>(i / 8) * 3);
        std::vector<Polyline>& group = groups.emplace_back(2);
        for (int k = 0; k < 40 + i; ++k) {
            const double angle = 2 * CV_PI * k / (40 + i);
            const cv::Point2f way(static_cast<float>(std::sin(angle)),
                                  static_cast<float>(std::cos(angle)));
            group[0].push_back(center + way);
            group[1].insert(group[1].begin(), center + way * 0.5f);
        }
    }
    return groups;
}

TEST(ContourFace, GroupsComeOutTheSameOnOneAndOnManyThreads) {
    const int before = cv::getNumThreads();
    cv::setNumThreads(1);
    Contours alone;
    Parse(alone, ManyRings(), true, 4, 4);
    cv::setNumThreads(8);
    Contours shared;
    Parse(shared, ManyRings(), true, 4, 4);
    cv::setNumThreads(before);
    ASSERT_EQ(alone.m_Triangles.size(), 40u);
    ASSERT_EQ(shared.m_Triangles.size(), 40u);
    for (size_t g = 0; g < 40; ++g) {
        EXPECT_GT(alone.m_Triangles[g].size(), 80u);
        ASSERT_EQ(alone.m_Triangles[g].size(), shared.m_Triangles[g].size());
        for (size_t i = 0; i < alone.m_Triangles[g].size(); ++i) {
            const Triangle2f& a = alone.m_Triangles[g][i];
            const Triangle2f& b = shared.m_Triangles[g][i];
            ASSERT_TRUE(a.a == b.a && a.b == b.b && a.c == b.c);
        }
        EXPECT_EQ(alone.m_GroupRects[g].center, shared.m_GroupRects[g].center);
        EXPECT_EQ(alone.m_EdgeCores[g].size(), shared.m_EdgeCores[g].size());
    }
    EXPECT_EQ(alone.m_AllRect.size, shared.m_AllRect.size);
    EXPECT_EQ(alone.m_MaxGroupSize, shared.m_MaxGroupSize);
}

}  // namespace
}  // namespace kelmo::test
