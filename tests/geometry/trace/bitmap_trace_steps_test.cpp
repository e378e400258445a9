// SPDX-License-Identifier: GPL-3.0-or-later
#include "geometry/trace/bitmap_trace_steps.h"

#include "traced_picture.h"

namespace kelmo::test {
namespace {

using ::testing::ElementsAre;

/// The walk around the ink of a drawing, worked out up to the vertices.
std::unique_ptr<Path> WalkAround(const std::vector<std::string>& rows) {
    Tracer tracer(Drawing(rows));
    const auto& paths = tracer.Run();
    auto path = std::make_unique<Path>();
    path->pt = paths.at(0)->pt;
    path->len = paths.at(0)->len;
    ComputeSums(*path);
    ComputeStraightReach(*path);
    FindPolygon(*path);
    AdjustVertices(*path);
    return path;
}

Curve Polygon(const std::vector<cv::Point2d>& vertices) {
    Curve curve(static_cast<int32_t>(vertices.size()));
    curve.vertex = vertices;
    return curve;
}

Curve Square(double side) {
    return Polygon({{0, 0}, {0, side}, {side, side}, {side, 0}});
}

TEST(BitmapTraceSteps, RoundingsAreTowardZero) {
    EXPECT_EQ(TruncatedSign(0.999), 0);
    EXPECT_EQ(TruncatedSign(-0.999), 0);
    EXPECT_EQ(TruncatedSign(1), 1);
    EXPECT_EQ(TruncatedSign(-1.5), -1);
    EXPECT_EQ(TruncatedSign(std::nan("")), 0);
    EXPECT_EQ(Truncate(-3.9), -3);
    EXPECT_EQ(Truncate(1e300), 2147483647);
    EXPECT_EQ(Mod(-1, 5), 4);
    EXPECT_EQ(Mod(-5, 5), 0);
    EXPECT_EQ(Mod(12, 5), 2);
    EXPECT_TRUE(Cyclic(4, 0, 2)) << "over the end of the walk";
    EXPECT_FALSE(Cyclic(4, 3, 2));
    EXPECT_FALSE(Cyclic(1, 3, 3)) << "the end is not part of the range";
}

TEST(BitmapTraceSteps, SumsAreRelativeToTheFirstPoint) {
    Path path;
    path.pt = {{5, 7}, {5, 8}, {6, 9}};
    path.len = 3;
    ComputeSums(path);
    ASSERT_EQ(path.sums.size(), 4u);
    EXPECT_EQ(path.sums[0].x2 + path.sums[1].x2, 0);
    EXPECT_EQ(path.sums[3].x, 1);
    EXPECT_EQ(path.sums[3].y, 3);
    EXPECT_EQ(path.sums[3].xy, 2);
    EXPECT_EQ(path.sums[3].x2, 1);
    EXPECT_EQ(path.sums[3].y2, 5);
}

// Three pixels in a row. The points of the long edges spread by 1.25 around their middle: the fit
// keeps its direction. Those of the short edges spread by 0.25, which is a length of 0: each corner
// has one line alone, gets a second one through itself and stays where it is.
TEST(BitmapTraceSteps, AnEdgeTooShortForADirectionLeavesItsCornersInPlace) {
    const std::unique_ptr<Path> path = WalkAround({".....", ".###.", "....."});
    ASSERT_EQ(path->m, static_cast<int32_t>(path->po.size()));
    for (int32_t i = 0; i < path->m; ++i) {
        EXPECT_LT(cv::norm(path->curve->vertex[i] - path->pt[path->po[i]]), 1e-9)
            << path->curve->vertex[i] << " is not " << path->pt[path->po[i]];
    }
}

TEST(BitmapTraceSteps, VerticesStayWithinHalfAPixelOfTheirCorner) {
    const cv::Mat letters = Letters("S&", 60);
    Tracer tracer(letters);
    for (const auto& found : tracer.Run()) {
        Path path;
        path.pt = found->pt;
        path.len = found->len;
        ComputeSums(path);
        ComputeStraightReach(path);
        FindPolygon(path);
        AdjustVertices(path);
        EXPECT_TRUE(std::is_sorted(path.po.begin(), path.po.end()));
        for (int32_t i = 0; i < path.m; ++i) {
            const cv::Point2d d = path.curve->vertex[i] - path.pt[path.po[i]];
            EXPECT_LE(std::max(std::abs(d.x), std::abs(d.y)), 0.5 + 1e-9);
        }
    }
}

// At the corner of a square of side s, twice the triangle's area over the taxicab length of its
// long side is s s / 2 s: alpha is (1 - 2 / s) / 0.75.
TEST(BitmapTraceSteps, CornersAndCurvesPartAtAlphaOne) {
    const struct {
        double side;
        double alpha0;
        double alpha;
        int32_t tag;
    } cases[] = {
        {2, 0, 0.55, kCurveSegment},
        {4, 0.5 / 0.75, 0.5 / 0.75, kCurveSegment},
        {7.9, (1 - 2 / 7.9) / 0.75, (1 - 2 / 7.9) / 0.75, kCurveSegment},
        {8, 1, 1, kCornerSegment},
        {100, 0.98 / 0.75, 0.98 / 0.75, kCornerSegment},
        // Below one pixel the denominator is 0 by truncation.
        {0.9, 4.0 / 3, 4.0 / 3, kCornerSegment},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.side);
        Curve curve = Square(c.side);
        SmoothCurve(curve, 1);
        for (int i = 0; i < 4; ++i) {
            EXPECT_DOUBLE_EQ(curve.alpha0[i], c.alpha0);
            EXPECT_DOUBLE_EQ(curve.alpha[i], c.alpha);
            EXPECT_EQ(curve.tag[i], c.tag);
            EXPECT_EQ(curve.beta[i], 0.5);
        }
    }
}

TEST(BitmapTraceSteps, CurvesLeanToTheirVertexByAlpha) {
    Curve curve = Square(4);
    SmoothCurve(curve, 1);
    // Segment 1 bends around (0, 4): handles 0.5 + 0.5 / 1.5 of the way from the neighbours.
    const double lean = 0.5 + 0.5 * (0.5 / 0.75);
    EXPECT_LT(cv::norm(curve.c[3] - cv::Point2d(0, 4 * lean)), 1e-12);
    EXPECT_LT(cv::norm(curve.c[4] - cv::Point2d(4 - 4 * lean, 4)), 1e-12);
    EXPECT_LT(cv::norm(curve.c[5] - cv::Point2d(2, 4)), 1e-12);
}

TEST(BitmapTraceSteps, ACurveOfNoSegmentsIsDoneAtOnce) {
    Path path;
    path.curve = std::make_unique<Curve>(0);
    SmoothCurve(*path.curve, 1);
    JoinCurves(path, 0.2);
    EXPECT_EQ(path.curve->alphaCurve, 1);
    EXPECT_EQ(path.curve->n, 0);
}

std::vector<cv::Point2d> Ring(int count, double radius) {
    std::vector<cv::Point2d> points;
    for (int i = 0; i < count; ++i) {
        const double angle = -2 * CV_PI * i / count;
        points.emplace_back(radius * std::cos(angle), radius * std::sin(angle));
    }
    return points;
}

TEST(BitmapTraceSteps, JoiningFollowsItsTolerance) {
    const struct {
        double tolerance;
        int32_t most;
        int32_t fewest;
    } cases[] = {{0, 24, 24}, {0.2, 12, 2}, {5, 6, 1}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.tolerance);
        Path path;
        path.curve = std::make_unique<Curve>(Polygon(Ring(24, 60)));
        SmoothCurve(*path.curve, 1);
        JoinCurves(path, c.tolerance);
        EXPECT_LE(path.curve->n, c.most);
        EXPECT_GE(path.curve->n, c.fewest);
        for (int32_t i = 0; i < path.curve->n; ++i) {
            EXPECT_TRUE(std::isfinite(path.curve->alpha[i]));
            EXPECT_GE(path.curve->beta[i], 0);
            EXPECT_LE(path.curve->beta[i], 1);
        }
    }
}

TEST(BitmapTraceSteps, JoiningLeavesCornersAlone) {
    Path path;
    path.curve = std::make_unique<Curve>(Square(50));
    SmoothCurve(*path.curve, 1);
    JoinCurves(path, 0.2);
    EXPECT_THAT(path.curve->tag, ElementsAre(1, 1, 1, 1));
    // The new curve begins with segment 1.
    EXPECT_LT(cv::norm(path.curve->vertex[0] - cv::Point2d(0, 50)), 1e-12);
}

}  // namespace
}  // namespace kelmo::test
