// SPDX-License-Identifier: GPL-3.0-or-later
#include <cmath>

#include "geometry/contours/contours.h"

namespace kelmo::test {
namespace {

/// One group of one sub-contour in a box of side `size`.
void SetGroup(Contours& contours, float size, std::vector<PathInfo> paths) {
    ContourPath group;
    group.maxX = group.maxY = size;
    group.subPaths.push_back(std::move(paths));
    contours.m_Paths.assign(1, group);
}

PathInfo Straight(float length) {
    return PathInfo::Line({0, 0}, {length, 0});
}

PathInfo Uncut(PathInfo path) {
    path.subdivide = false;
    return path;
}

struct CountCase {
    const char* name;
    PathInfo path;
    float segment;
    bool subdivideLines;
    size_t steps;
};

// In a box of side 1 a step is sqrt(8) times `segment`: with 0.25 / sqrt(8) it is 0.25 (and a hair,
// so that whole quotients do not hang on the last bit).
TEST(FlattenPaths, CutSegmentsByTheSizeOfTheGroup) {
    const float quarter = 0.2501f / std::sqrt(8.0f);
    const PathInfo quadratic = PathInfo::Quadratic({0, 0}, {0.5f, 1}, {1, 0});
    const PathInfo cubic = PathInfo::Cubic({0, 0}, {0, 1}, {1, 1}, {1, 0});
    const CountCase cases[] = {
        {"line that is not cut", Straight(1), quarter, false, 1},
        {"line that is cut", Straight(1), quarter, true, 4},
        {"a line's own flag does not count", Uncut(Straight(1)), quarter, true, 4},
        {"longer than a whole number of steps", Straight(1.1f), quarter, true, 5},
        {"shorter than a step", Straight(0.1f), quarter, true, 1},
        {"no length", Straight(0), quarter, true, 1},
        {"quadratic", quadratic, quarter, false, 4},
        {"quadratic that is not to be cut", Uncut(quadratic), quarter, true, 1},
        {"cubic by its chord", cubic, quarter, false, 4},
        {"cubic that is not to be cut", Uncut(cubic), quarter, true, 1},
        {"no step length", cubic, 0, true, 1},
        {"a negative one cuts nothing at all", Straight(1), -quarter, true, 0},
        {"NaN", Straight(1), std::nanf(""), true, 1},
    };
    for (const CountCase& c : cases) {
        SCOPED_TRACE(c.name);
        Contours contours;
        SetGroup(contours, 1, {c.path});
        contours.FlattenPaths(c.segment, c.subdivideLines);
        EXPECT_EQ(contours.m_Points.at(0).at(0).size(), c.steps);
        EXPECT_EQ(contours.m_Edges.at(0).at(0).size(), 2 * c.steps);
    }
}

TEST(FlattenPaths, SmallGroupsGetAsManyStepsAsLargeOnes) {
    for (const float size : {0.001f, 1.0f, 700.0f}) {
        Contours contours;
        SetGroup(contours, size, {Straight(size)});
        contours.FlattenPaths(0.1f, true);
        EXPECT_EQ(contours.m_Points[0][0].size(), 4u) << size;  // 1 / (0.1 * sqrt(8)) = 3.5
    }
}

TEST(FlattenPaths, StepsLieOnTheirCurveAndJoinBitForBit) {
    Contours contours;
    SetGroup(contours, 1,
             {PathInfo::Quadratic({0, 0}, {0.5f, 1}, {1, 0}),
              PathInfo::Cubic({1, 0}, {1, 0.3f}, {0.7f, 0.9f}, {0.1f, 0.8f}),
              PathInfo::Line({0.1f, 0.8f}, {0, 0})});
    contours.FlattenPaths(0.02f, true);
    const auto& points = contours.m_Points[0][0];
    const auto& edges = contours.m_Edges[0][0];
    ASSERT_EQ(edges.size(), 2 * points.size());
    float length = 0;
    for (size_t k = 0; k < points.size(); ++k) {
        EXPECT_EQ(edges[2 * k + 1], points[k]);
        EXPECT_EQ(edges[2 * k], points[(k + points.size() - 1) % points.size()]);
        length += static_cast<float>(cv::norm(edges[2 * k + 1] - edges[2 * k]));
    }
    EXPECT_FLOAT_EQ(contours.m_PathLengths.at(0), length);
    // The quadratic is y = 2 x (1 - x).
    for (const cv::Point2f& p : points) {
        if (&p - points.data() < 18) {
            EXPECT_NEAR(p.y, 2 * p.x * (1 - p.x), 1e-6);
        }
    }
    const PathInfo& cubic = contours.m_Paths[0].subPaths[0][1];
    const cv::Point2f middle = cubic.At(0.5f);
    EXPECT_NEAR(middle.x, (1 + 3 * 1 + 3 * 0.7 + 0.1) / 8, 1e-6);
    EXPECT_NEAR(middle.y, (0 + 3 * 0.3 + 3 * 0.9 + 0.8) / 8, 1e-6);
}

TEST(FlattenPaths, GroupsWithoutAreaAndTinyStepsComeToAnEnd) {
    Contours flat;
    SetGroup(flat, 0, {Straight(5), Straight(0)});
    flat.FlattenPaths(0.01f, true);
    EXPECT_EQ(flat.m_Points[0][0].size(), 2u);

    Contours tiny;
    SetGroup(tiny, 1, std::vector<PathInfo>(100, Straight(1)));
    tiny.FlattenPaths(1e-20f, true);
    EXPECT_GE(tiny.m_Points[0][0].size(), 100u);
    EXPECT_LE(tiny.m_Points[0][0].size(), 100u + Contours::kMostStepsOfFace);
}

TEST(FlattenPaths, ListsStayParallelWhateverAGroupHolds) {
    Contours contours;
    contours.m_Paths.resize(3);
    contours.m_Paths[1].subPaths.resize(2);
    contours.m_Paths[1].subPaths[1].push_back(Straight(1));
    for (int round = 0; round < 2; ++round) {
        contours.FlattenPaths(0.1f, true);
        ASSERT_EQ(contours.m_Points.size(), 3u);
        ASSERT_EQ(contours.m_Edges.size(), 3u);
        EXPECT_EQ(contours.m_PathLengths.size(), 3u);
        EXPECT_EQ(contours.m_Points[1].size(), 2u);
        EXPECT_EQ(contours.m_Edges[1].size(), 2u);
        EXPECT_TRUE(contours.m_Points[1][0].empty());
    }
    contours.ClearDerived();
    EXPECT_TRUE(contours.m_Points.empty() && contours.m_Edges.empty());
    EXPECT_EQ(contours.m_Paths.size(), 3u);
}

}  // namespace
}  // namespace kelmo::test
