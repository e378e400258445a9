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

/// The walk around a lop-sided blob of 11 x 8 pixels, one letter a step.
void WalkAroundBlob(Path& path) {
    cv::Point2d at(3, 1);
    for (const char step : std::string("DLDLDDRDDRDRDRRRURRURURUUULLULLULLLL")) {
        path.pt.push_back(at);
        at.x += (step == 'R') - (step == 'L');
        at.y += (step == 'D') - (step == 'U');
    }
    path.len = static_cast<int32_t>(path.pt.size());
}

/// Where the lines through the blob's polygon edges meet.
const std::vector<cv::Point2d> kBlobVertices = {{3, 1},
                                                {0.763420, 3.989988},
                                                {4.169844, 9.188848},
                                                {8.326790, 8.101782},
                                                {11.214286, 5.214286},
                                                {10.914214, 3.207107},
                                                {5.085786, 0.792893}};

// The numbers of this test and the next were worked out apart from this code: penalties point by
// point over all shortest polygons, fitted lines from the angle of the principal axis, joined
// curves by bisection for the area and by sampling for the distances.
TEST(BitmapTraceSteps, ABlobHasTheBestPolygonAndItsLinesMeetAtTheVertices) {
    Path path;
    WalkAroundBlob(path);
    ComputeSums(path);
    ComputeStraightReach(path);
    FindPolygon(path);
    ASSERT_THAT(path.po, ElementsAre(0, 5, 13, 18, 24, 26, 34));
    AdjustVertices(path);
    // The first corner has one line of a direction alone; its place hangs on a rounding.
    for (int32_t i = 1; i < path.m; ++i) {
        EXPECT_LT(cv::norm(path.curve->vertex[i] - kBlobVertices[i]), 2e-6) << i;
    }
}

TEST(BitmapTraceSteps, ABlobIsJoinedToFourCurvesOfTheSameArea) {
    const struct {
        cv::Point2d c[3];
        double alpha;
        double beta;
    } expected[] = {
        {{{0.19218, 4.75365}, {3.47086, 9.37164}, {6.248317, 8.645315}}, 0.249147, 0.678893},
        {{{8.70103, 8.00392}, {11.27675, 5.63213}, {11.064250, 4.210696}}, 0.465167, 0.436007},
        {{{10.90419, 3.14005}, {5.78465, 0.7235}, {4.042893, 0.896446}}, 0.270862, 0.860451},
        {{{3.469302, 0.953401}, {2.496769, 1.672747}, {1.881710, 2.494994}}, 0.55, 0.141564},
    };
    // Mirrored it turns the other way round, and the same holds.
    for (const double side : {1.0, -1.0}) {
        SCOPED_TRACE(side);
        const auto mirrored = [&](const cv::Point2d& p) { return cv::Point2d(side * p.x, p.y); };
        std::vector<cv::Point2d> vertices;
        for (const cv::Point2d& p : kBlobVertices) vertices.push_back(mirrored(p));
        Path path;
        path.curve = std::make_unique<Curve>(Polygon(vertices));
        SmoothCurve(*path.curve, 1);
        JoinCurves(path, 0.2);
        ASSERT_EQ(path.curve->n, 4);
        for (size_t i = 0; i < 4; ++i) {
            for (size_t k = 0; k < 3; ++k) {
                const cv::Point2d c = mirrored(expected[i].c[k]);
                EXPECT_LT(cv::norm(path.curve->c[3 * i + k] - c), 2e-5) << i << k;
            }
            EXPECT_EQ(path.curve->tag[i], kCurveSegment);
            EXPECT_NEAR(path.curve->alpha[i], expected[i].alpha, 2e-6) << i;
            EXPECT_NEAR(path.curve->beta[i], expected[i].beta, 2e-6) << i;
        }
    }
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
