// SPDX-License-Identifier: GPL-3.0-or-later
#include "geometry/trace/bitmap_trace.h"

#include <opencv2/imgproc.hpp>

#include "traced_picture.h"

namespace kelmo::test {
namespace {

using ::testing::ElementsAre;

std::vector<int> Areas(const Tracer& tracer) {
    std::vector<int> areas;
    for (const auto& path : tracer.GetPathList()) {
        areas.push_back(path->area);
    }
    return areas;
}

std::string Signs(const Tracer& tracer) {
    std::string signs;
    for (const auto& path : tracer.GetPathList()) {
        signs += path->sign;
    }
    return signs;
}

cv::Mat Noise(cv::Size size, int inkPercent) {
    cv::Mat picture(size, CV_8UC1);
    cv::RNG random(7);
    random.fill(picture, cv::RNG::UNIFORM, 0, 100);
    return picture >= inkPercent;
}

struct SmallCase {
    const char* name;
    std::vector<std::string> rows;
    std::vector<int> areas;
    std::string signs;
};

TEST(BitmapTrace, FindsTheClosedPathsOfSmallDrawings) {
    const SmallCase cases[] = {
        {"nothing", {"...", "..."}, {}, ""},
        {"one pixel is a speck", {"...", ".#.", "..."}, {}, ""},
        {"two pixels are a speck", {"....", ".##.", "...."}, {}, ""},
        {"three pixels are not", {".....", ".###.", "....."}, {3}, "+"},
        {"ink alone", {"####", "####", "####"}, {12}, "+"},
        {"ring and hole", {"#####", "#...#", "#...#", "#####"}, {20, 6}, "+-"},
        {"hole too small", {"#####", "#..##", "#####"}, {15}, "+"},
        {"island in a hole",
         {"#######", "#.....#", "#.##..#", "#.##..#", "#.....#", "#######"},
         {42, 20, 4},
         "+-+"},
        {"order by rows, then from the left",
         {"......##", "##....##", "##....##", "...##...", "...##..."},
         {6, 4, 4},
         "+++"},
    };
    for (const SmallCase& c : cases) {
        SCOPED_TRACE(c.name);
        Tracer tracer(Drawing(c.rows));
        tracer.Run();
        EXPECT_EQ(Areas(tracer), c.areas);
        EXPECT_EQ(Signs(tracer), c.signs);
    }
}

TEST(BitmapTrace, TakesPicturesWithoutArea) {
    cv::Mat none;
    Bitmap empty;
    BitmapTrace trace;
    trace.Trace(&empty, &empty);
    EXPECT_TRUE(trace.GetPathList().empty());
}

TEST(BitmapTrace, ForgetsEverythingWhenCleared) {
    Tracer tracer(Letters("B", 40));
    EXPECT_FALSE(tracer.isReady);
    EXPECT_EQ(tracer.Run().size(), 3u);
    EXPECT_TRUE(tracer.isReady);
    tracer.Clear();
    EXPECT_TRUE(tracer.GetPathList().empty());
    EXPECT_FALSE(tracer.isReady);
}

// Two squares that touch by a corner, alone on an empty page: around the corner most is empty.
TEST(BitmapTrace, JoinsOrPartsTouchingCornersByTheTurnPolicy) {
    const std::vector<std::string> squares = {"......", ".##...", ".##...",
                                              "...##.", "...##.", "......"};
    const std::vector<std::string> holes = {"########", "########", "##..####", "##..####",
                                            "####..##", "####..##", "########", "########"};
    const struct {
        const char* policy;
        std::vector<int> squares;
        std::vector<int> holes;
    } cases[] = {
        {"right", {8}, {64, 8}},    {"left", {4, 4}, {64, 4, 4}}, {"black", {8}, {64, 4, 4}},
        {"white", {4, 4}, {64, 8}}, {"minority", {8}, {64, 8}},   {"majority", {4, 4}, {64, 4, 4}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.policy);
        Tracer onPaper(Drawing(squares));
        onPaper.turnPolicy = c.policy;
        onPaper.Run();
        EXPECT_EQ(Areas(onPaper), c.squares);
        Tracer inInk(Drawing(holes));
        inInk.turnPolicy = c.policy;
        inInk.Run();
        EXPECT_EQ(Areas(inInk), c.holes);
    }
}

TEST(BitmapTrace, WalksEncloseExactlyTheInkWhenNoSpeckIsDropped) {
    cv::Mat board(33, 47, CV_8UC1);
    for (int y = 0; y < board.rows; ++y) {
        for (int x = 0; x < board.cols; ++x) {
            board.at<uint8_t>(y, x) = (x + y) % 2 ? 255 : 0;
        }
    }
    const std::pair<const char*, cv::Mat> pictures[] = {
        {"checkerboard", board},
        {"little noise", Noise({90, 70}, 20)},
        {"half noise", Noise({90, 70}, 50)},
        {"much noise", Noise({90, 70}, 80)},
        {"all ink", cv::Mat::zeros(20, 30, CV_8UC1)},
        {"one row", Noise({64, 1}, 50)},
        {"one column", Noise({1, 64}, 50)},
    };
    for (const auto& [name, picture] : pictures) {
        for (const char* policy : {"minority", "left", "right"}) {
            SCOPED_TRACE(std::string(name) + ", " + policy);
            Tracer tracer(picture);
            tracer.turdSize = 0;
            tracer.turnPolicy = policy;
            const cv::Mat filled = Fill(Walks(tracer.Run()), picture.size());
            EXPECT_EQ(cv::norm(filled, picture, cv::NORM_INF), 0);
        }
    }
}

TEST(BitmapTrace, OutlinesOfLettersCoverTheirInk) {
    for (const char* text : {"S", "B", "g", "8", "&", "Ketchup"}) {
        for (const int height : {100, 180, 400}) {
            SCOPED_TRACE(std::string(text) + " of " + std::to_string(height) + " pixels");
            const cv::Mat picture = Letters(text, height);
            Tracer tracer(picture);
            const auto& paths = tracer.Run();
            const cv::Mat filled = Fill(Outlines(paths), picture.size());
            int border = 0;
            for (const auto& path : paths) {
                border += path->len;
                EXPECT_LE(path->curve->n, path->m);
                EXPECT_LT(path->m, path->len / 4) << "hardly simpler than the pixel edges";
            }
            // A smooth line cannot follow each pixel edge: of five border pixels one may change
            // sides. Once strokes are some 40 pixels wide that is one percent of the ink.
            EXPECT_LT(cv::countNonZero(filled != picture), 0.2 * border);
            // And as many one way as the other: the outline is not swollen.
            EXPECT_LT(std::abs(cv::countNonZero(filled) - cv::countNonZero(picture)),
                      0.15 * border);
            EXPECT_GE(InkOverlap(filled, picture), height >= 400 ? 0.99 : 0.97);
        }
    }
}

TEST(BitmapTrace, DrawsADiscAsAFewSmoothCurves) {
    cv::Mat picture(200, 200, CV_8UC1, cv::Scalar(255));
    for (int y = 0; y < 200; ++y) {
        for (int x = 0; x < 200; ++x) {
            if (std::hypot(x + 0.5 - 100, y + 0.5 - 100) <= 80) {
                picture.at<uint8_t>(y, x) = 0;
            }
        }
    }
    Tracer unjoined(picture);
    unjoined.optCurve = 0;
    const int32_t before = unjoined.Run().at(0)->curve->n;
    EXPECT_EQ(before, unjoined.GetPathList()[0]->m);
    Tracer tracer(picture);
    const Curve& curve = *tracer.Run().at(0)->curve;
    EXPECT_LT(curve.n, before);
    EXPECT_LE(curve.n, 16);
    EXPECT_THAT(curve.tag, ::testing::Each(int32_t(kCurveSegment)));
    const Polygons outlines = Outlines(tracer.GetPathList());
    for (const cv::Point2d& p : outlines.at(0)) {
        EXPECT_NEAR(cv::norm(p - cv::Point2d(100, 100)), 80, 1.0);
    }
}

TEST(BitmapTrace, KeepsTheCornersOfARectangle) {
    cv::Mat picture(60, 80, CV_8UC1, cv::Scalar(255));
    cv::rectangle(picture, cv::Rect(10, 20, 50, 30), cv::Scalar(0), cv::FILLED);
    Tracer tracer(picture);
    const Curve& curve = *tracer.Run().at(0)->curve;
    ASSERT_EQ(curve.n, 4);
    EXPECT_EQ(curve.alphaCurve, 1);
    std::vector<cv::Point2d> corners;
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(curve.tag[i], kCornerSegment);
        corners.push_back(curve.c[3 * i + 1]);
        const cv::Point2d middle = (curve.vertex[i] + curve.vertex[(i + 1) % 4]) * 0.5;
        EXPECT_LT(cv::norm(curve.End(i) - middle), 1e-9) << "a segment ends amid an edge";
    }
    for (const cv::Point2d& expected :
         {cv::Point2d(10, 20), cv::Point2d(10, 50), cv::Point2d(60, 50), cv::Point2d(60, 20)}) {
        EXPECT_TRUE(std::any_of(corners.begin(), corners.end(), [&](const cv::Point2d& corner) {
            return cv::norm(corner - expected) < 1e-9;
        })) << expected;
    }
}

void ExpectSamePaths(const BitmapTrace& first, const BitmapTrace& second) {
    ASSERT_EQ(first.GetPathList().size(), second.GetPathList().size());
    for (size_t i = 0; i < first.GetPathList().size(); ++i) {
        const Path& a = *first.GetPathList()[i];
        const Path& b = *second.GetPathList()[i];
        ASSERT_EQ(a.pt, b.pt);
        ASSERT_EQ(a.po, b.po);
        ASSERT_EQ(a.curve->tag, b.curve->tag);
        for (size_t k = 0; k < a.curve->c.size(); ++k) {
            if (k % 3 != 0 || a.curve->tag[k / 3] == kCurveSegment) {
                ASSERT_EQ(a.curve->c[k], b.curve->c[k]);
            }
        }
    }
}

/// One outline a thousand times as long as the specks around it.
cv::Mat LettersAmongSpecks() {
    cv::Mat picture = Noise({320, 240}, 45);
    Letters("8Sg", 150)(cv::Rect(0, 0, 250, 150)).copyTo(picture(cv::Rect(10, 10, 250, 150)));
    return picture;
}

TEST(BitmapTrace, GivesTheSameResultOnOneAndOnEightThreads) {
#ifdef __SANITIZE_THREAD__
    GTEST_SKIP() << "OpenCV's threads are not instrumented: the next test stands in";
#endif
    const int before = cv::getNumThreads();
    cv::setNumThreads(1);
    Tracer single(LettersAmongSpecks());
    EXPECT_GT(single.Run().size(), 100u);
    cv::setNumThreads(8);
    Tracer several(LettersAmongSpecks());
    several.Run();
    cv::setNumThreads(before);
    ExpectSamePaths(single, several);
}

TEST(BitmapTrace, WorkersShareNothing) {
    cv::setNumThreads(1);
    Tracer single(LettersAmongSpecks());
    single.Run();
    cv::setNumThreads(-1);
    Tracer shared(LettersAmongSpecks());
    shared.RunOnTwoThreads();
    ExpectSamePaths(single, shared);
}

}  // namespace
}  // namespace kelmo::test
