// SPDX-License-Identifier: GPL-3.0-or-later
#include <limits>
#include <opencv2/imgproc.hpp>

#include "geometry/contours/contours.h"

namespace kelmo::test {
namespace {

const cv::Scalar kWhite(255, 255, 255, 255);
const cv::Scalar kBlack(0, 0, 0, 255);
const cv::Scalar kClear(0, 0, 0, 0);

/// A page of one colour with filled boxes.
cv::Mat Page(cv::Size size, const cv::Scalar& color) {
    return cv::Mat(size, CV_8UC4, color);
}

cv::Mat With(cv::Mat page, const cv::Rect& box, const cv::Scalar& color) {
    cv::rectangle(page, box, color, cv::FILLED);
    return page;
}

bool Parse(Contours& contours, const cv::Mat& frame, bool reverse = false, bool force = true,
           int threshold = 20) {
    return contours.ParseMask(frame, frame.cols, frame.rows, 0.01f, threshold, reverse, force);
}

struct MaskCase {
    const char* name;
    cv::Mat frame;
    bool reverse;
    size_t shapes;
    cv::Rect bound;
};

TEST(MaskContours, TellTheForegroundFromTheBackground) {
    const cv::Size size(64, 48);
    const cv::Rect small(10, 12, 20, 16);
    const cv::Rect all(1, 1, 62, 46);
    const MaskCase cases[] = {
        {"fully transparent", Page(size, kClear), false, 0, {}},
        {"white all over", Page(size, kWhite), false, 0, {}},
        {"black all over", Page(size, kBlack), false, 0, {}},
        {"black on white", With(Page(size, kWhite), small, kBlack), false, 1, small},
        {"white on black", With(Page(size, kBlack), small, kWhite), false, 1, small},
        // The box is all there is, so its level is the background, inside and out.
        {"one colour on clear", With(Page(size, kClear), small, kWhite), false, 0, {}},
        {"two colours on clear",
         With(With(Page(size, kClear), {4, 4, 50, 40}, kWhite), small, kBlack), false, 1, small},
        // Level 1 turned to 254: what is darker than 234 is foreground.
        {"white on black, turned", With(Page(size, kBlack), small, kWhite), true, 2, all},
        // A transparent page turned to 255: all of it is foreground, the border stays.
        {"fully transparent, turned", Page(size, kClear), true, 1, all},
        {"too like the background",
         With(Page(size, kWhite), small, {240, 240, 240, 255}),
         false,
         0,
         {}},
        {"half transparent counts by its alpha",
         With(Page(size, kWhite), small, {255, 255, 255, 128}), false, 1, small},
        {"over the border",
         With(Page(size, kWhite), {-5, -5, 20, 20}, kBlack),
         false,
         1,
         {1, 1, 14, 14}},
    };
    for (const MaskCase& c : cases) {
        SCOPED_TRACE(c.name);
        Contours contours;
        EXPECT_TRUE(Parse(contours, c.frame, c.reverse));
        size_t shapes = 0;
        for (const ContourPath& group : contours.m_Paths) {
            shapes += group.subPaths.size();
        }
        EXPECT_LE(contours.m_Paths.size(), 1u) << "a mask is one group";
        EXPECT_EQ(shapes, c.shapes);
        EXPECT_EQ(contours.m_Bound, c.bound);
    }
}

TEST(MaskContours, ThresholdMeasuresFromTheBackgroundLevel) {
    // Dark road: level 100 and threshold 20: 100 * 20 / 255 + 100 = 107.8.
    // Bright road: level 200: 200 - 20 = 180, what is at or below is foreground.
    constexpr int kMost = std::numeric_limits<int>::max();
    const struct {
        int background, shape;
        bool found;
        int threshold = 20;
    } cases[] = {{100, 107, false},       {100, 108, true},         {100, 90, false},
                 {200, 181, false},       {200, 180, true},         {200, 220, false},
                 {100, 101, true, 0},     {100, 101, true, -kMost}, {100, 200, false, kMost},
                 {100, 201, true, kMost}, {200, 0, false, kMost},   {200, 199, true, -kMost - 1}};
    for (const auto& c : cases) {
        SCOPED_TRACE(std::to_string(c.shape) + " on " + std::to_string(c.background));
        const cv::Scalar background(c.background, c.background, c.background, 255);
        const cv::Scalar shape(c.shape, c.shape, c.shape, 255);
        Contours contours;
        Parse(contours, With(Page({40, 40}, background), {10, 10, 20, 20}, shape), false, true,
              c.threshold);
        EXPECT_EQ(!contours.m_Paths.empty(), c.found);
    }
}

TEST(MaskContours, MapTheTracedBoxToTheFrame) {
    Contours contours;
    Parse(contours, With(Page({200, 100}, kBlack), {50, 25, 100, 50}, kWhite));
    const ContourPath& group = contours.m_Paths.at(0);
    EXPECT_FLOAT_EQ(group.minX, -1);
    EXPECT_FLOAT_EQ(group.maxX, 1);
    EXPECT_FLOAT_EQ(group.maxY, 0.5f);
    EXPECT_FLOAT_EQ(group.minY, -0.5f);
    ASSERT_EQ(group.subPaths.size(), 1u);
    // Four corners, two lines each, a closed ring.
    const std::vector<PathInfo>& paths = group.subPaths[0];
    ASSERT_EQ(paths.size(), 8u);
    for (size_t i = 0; i < paths.size(); ++i) {
        EXPECT_EQ(paths[i].type, kPathLine);
        EXPECT_TRUE(paths[i].subdivide);
        EXPECT_EQ(paths[i].end, paths[(i + 1) % 8].start);
        EXPECT_NEAR(std::max(std::abs(paths[i].end.x), 2 * std::abs(paths[i].end.y)), 1, 1e-6);
    }
}

TEST(MaskContours, CurvesThatAreAsGoodAsStraightAreNotCut) {
    cv::Mat page = Page({400, 400}, kBlack);
    cv::circle(page, {200, 200}, 150, kWhite, cv::FILLED);
    cv::circle(page, {200, 200}, 60, kBlack, cv::FILLED);
    Contours contours;
    Parse(contours, page);
    ASSERT_EQ(contours.m_Paths.size(), 1u);
    ASSERT_EQ(contours.m_Paths[0].subPaths.size(), 2u) << "ring and hole";
    int cut = 0;
    for (const auto& subPath : contours.m_Paths[0].subPaths) {
        for (const PathInfo& path : subPath) {
            if (path.type != kPathCubic) {
                continue;
            }
            const cv::Point2d a = path.end - path.control1;
            const cv::Point2d b = path.control2 - path.start;
            const double parallel = std::abs(a.dot(b)) / (cv::norm(a) * cv::norm(b));
            if (parallel > 0.99 + 1e-6) {
                EXPECT_FALSE(path.subdivide);
            }
            cut += path.subdivide;
        }
    }
    EXPECT_GT(cut, 8) << "the curves of a circle bend";
}

TEST(MaskContours, AnUnchangedBoxKeepsTheOldGeometryUnlessForced) {
    const cv::Mat frame = With(Page({64, 64}, kBlack), {10, 10, 30, 30}, kWhite);
    Contours contours;
    EXPECT_TRUE(Parse(contours, frame, false, false));
    EXPECT_FALSE(Parse(contours, frame, false, false));
    EXPECT_TRUE(Parse(contours, frame, false, true));
    cv::Mat hollow = With(frame.clone(), {20, 20, 10, 10}, kBlack);
    EXPECT_FALSE(Parse(contours, hollow, false, false));
    EXPECT_EQ(contours.m_Paths[0].subPaths.size(), 1u);
    EXPECT_TRUE(Parse(contours, Page({64, 64}, kBlack), false, false)) << "the box has changed";
    EXPECT_TRUE(contours.m_Paths.empty());
}

TEST(MaskContours, TakePicturesOfAnySize) {
    for (const cv::Size size :
         {cv::Size(1, 1), {1, 40}, {40, 1}, {2, 2}, {2, 40}, {3, 3}, {5, 3}}) {
        for (const bool reverse : {false, true}) {
            Contours contours;
            EXPECT_TRUE(Parse(contours, With(Page(size, kBlack), {0, 0, 2, 2}, kWhite), reverse));
        }
    }
    Contours contours;
    EXPECT_FALSE(contours.ParseMask(cv::Mat(), 10, 10, 0, 20, false, true));
    EXPECT_FALSE(contours.ParseMask(cv::Mat(4, 4, CV_8UC3), 4, 4, 0, 20, false, true));
    EXPECT_FALSE(contours.ParseMask(Page({4, 4}, kWhite), 0, 4, 0, 20, false, true));
}

}  // namespace
}  // namespace kelmo::test
