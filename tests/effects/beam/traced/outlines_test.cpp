// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <algorithm>
#include <opencv2/imgproc.hpp>

#include "effects/beam/traced/ink_picture.h"
#include "effects/beam/traced/text_arcs.h"
#include "effects/beam/traced/text_outline.h"
#include "effects/beam/traced/traced_lines.h"
#include "geometry/trace/bitmap_trace.h"
#include "tests/geometry/contours/scripted_text.h"

namespace kelmo {
namespace {

/// A square of `ink` in the middle of 40 x 30.
cv::Mat Square(uint8_t background, uint8_t ink) {
    cv::Mat picture(30, 40, CV_8UC1, cv::Scalar(background));
    picture(cv::Rect(10, 8, 20, 14)).setTo(ink);
    return picture;
}

/// The grey level that four equal neighbours give `level`.
uint8_t GrayFor(int level) {
    for (int gray = 0; gray < 256; ++gray) {
        if (gray * gray / 255 == level) return static_cast<uint8_t>(gray);
    }
    ADD_FAILURE() << level;
    return 0;
}

TEST(Ink, IsWhatStandsOutFromTheBackground) {
    EXPECT_EQ(GrayFor(127) + 1, GrayFor(128));
    const struct {
        const char* name;
        uint8_t background, ink;
        int32_t threshold;
        bool reverse;
        bool inside, outside;
    } cases[] = {
        {"bright on 127", GrayFor(127), 255, 20, false, true, false},
        {"dark on 127 is none", GrayFor(127), 0, 20, false, false, false},
        {"dark on 128", GrayFor(128), 0, 20, false, true, false},
        {"bright on 128 is none", GrayFor(128), 255, 20, false, false, false},
        {"faint on 127", GrayFor(127), GrayFor(128), 20, false, false, false},
        {"faint on 127, keen", GrayFor(127), GrayFor(128), 0, false, true, false},
        {"faint on black", 0, 20, 200, false, true, false},
        {"black reversed", 0, 255, 20, true, false, true},
        {"background only", 60, 60, 20, false, false, false},
        {"huge threshold", 0, 255, 2147483647, false, true, false},
        {"huge threshold below", 255, 0, -2147483647, false, true, true},
    };
    for (const auto& c : cases) {
        InkPicture picture;
        const cv::Mat& ink = picture.Find(Square(c.background, c.ink), c.threshold, c.reverse);
        EXPECT_EQ(ink.at<uint8_t>(15, 20), c.inside ? 255 : 0) << c.name;
        EXPECT_EQ(ink.at<uint8_t>(4, 5), c.outside ? 255 : 0) << c.name;
        EXPECT_EQ(cv::countNonZero(ink.row(0)) + cv::countNonZero(ink.col(39)), 0) << c.name;
    }
}

TEST(Ink, IsFoundUpToTheLastPixelOfAnySize) {
    InkPicture picture;
    for (const cv::Size size : {cv::Size(1, 1), {2, 1}, {1, 3}, {3, 3}, {4, 3}, {5, 7}}) {
        // An exact buffer on the heap: the sanitizers see a read behind it.
        std::vector<uint8_t> bytes(static_cast<std::size_t>(size.area()), 200);
        const cv::Mat& ink =
            picture.Find(cv::Mat(size, CV_8UC1, bytes.data()), InkPicture::kUsualThreshold, false);
        EXPECT_EQ(ink.size(), size);
        EXPECT_EQ(cv::countNonZero(ink), 0);
    }
    cv::Mat rows(30, 64, CV_8UC1, cv::Scalar(0));
    Square(0, 255).copyTo(rows(cv::Rect(0, 0, 40, 30)));
    const cv::Mat packed = picture.Find(Square(0, 255), 20, false).clone();
    const cv::Mat& padded = picture.Find(rows(cv::Rect(0, 0, 40, 30)), 20, false);
    EXPECT_EQ(cv::norm(packed, padded), 0.0) << "rows with a gap between them";
}

TEST(Ink, OfABandAsHighAsThePictureIsWhatStandsOutInTheBand) {
    cv::Mat picture = cv::Mat::zeros(40, 100, CV_8UC1);
    picture(cv::Rect(40, 0, 30, 40)).setTo(250);
    picture(cv::Rect(50, 10, 8, 8)).setTo(30);
    InkPicture finder;
    const cv::Mat& ink = finder.Find(picture, 20, false);
    EXPECT_EQ(ink.at<uint8_t>(14, 54), 255);
    EXPECT_EQ(ink.at<uint8_t>(20, 10), 0) << "black at the side is background";
    EXPECT_EQ(ink.at<uint8_t>(30, 60), 0);
}

TEST(TracedOutlines, AreClosedAndTheirProgressTilesOne) {
    cv::Mat ink = cv::Mat::zeros(60, 80, CV_8UC1);
    ink(cv::Rect(10, 10, 20, 20)).setTo(255);
    cv::circle(ink, {55, 30}, 15, cv::Scalar(255), cv::FILLED);
    cv::Mat work = ink.clone();
    Bitmap bitmap(ink);
    Bitmap workBitmap(work);
    BitmapTrace trace;
    trace.Trace(&bitmap, &workBitmap);
    std::vector<CurveLine> lines;
    TracedLines(trace.GetPathList(), ink.size(), [&](const CurveLine& l) { lines.push_back(l); });
    ASSERT_FALSE(lines.empty());
    std::size_t first = 0;
    int paths = 0;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (i == first) {
            EXPECT_EQ(lines[i].startProgress, 0.0F);
        } else {
            EXPECT_EQ(lines[i].start, lines[i - 1].end);
            EXPECT_EQ(lines[i].startProgress, lines[i - 1].endProgress);
        }
        if (lines[i].endProgress < 1.0F) continue;
        EXPECT_EQ(lines[i].end, lines[first].start);
        first = i + 1;
        ++paths;
    }
    EXPECT_EQ(paths, 3) << "the frame, the square, the circle";
    EXPECT_EQ(first, lines.size());
}

TEST(OutlinesOfText, BecomeLinesThatShareProgressByTheirLength) {
    test::ScriptedText text;
    text.p = 0.25F;
    text.q = 0.75F;
    text.height = 50;
    text.paths.resize(2);  // the first one is a blank
    // A line of 30, a cubic of 40 across, a quadratic of 50 back to the start.
    text.paths[1].Add(16, 0, 0).Add(20, 0, 30).Add(24, 10, 40).Add(24, 30, 40).Add(24, 40, 30);
    text.paths[1].Add(25, 20, 5).Add(25, 0, 0);
    TextOutline outline;
    ASSERT_TRUE(outline.Read(text, {200, 100}));
    const auto& lines = outline.Lines();
    ASSERT_EQ(lines.size(), 3U);
    // The canvas of 100 x 50 has its middle at (50, 75) of the frame: it begins at (0, 50).
    EXPECT_EQ(lines[0].start, cv::Point2f(-1.0F, 0.0F));
    EXPECT_FLOAT_EQ(lines[0].end.y, -0.6F);
    EXPECT_EQ(lines[0].control1, lines[0].start);
    EXPECT_NEAR(cv::norm(lines[1].control1 - cv::Point2f(-0.9F, -0.8F)), 0.0, 1e-6);
    EXPECT_EQ(lines[2].control2, cv::Point2f(kNoControl, kNoControl));
    EXPECT_EQ(lines[2].end, lines[0].start);
    EXPECT_EQ(lines[0].endProgress, lines[1].startProgress);
    EXPECT_FLOAT_EQ(lines[2].endProgress, 1.0F);
    EXPECT_FLOAT_EQ(lines[0].endProgress / (lines[1].endProgress - lines[1].startProgress), 1.5F);
    EXPECT_EQ(outline.Box(), cv::Rect(0, 50, 40, 40));

    text.width = 200;
    text.height = 100;
    ASSERT_TRUE(outline.Read(text, {200, 100}));
    EXPECT_EQ(outline.Lines()[0].start, cv::Point2f(-1.0F, 1.0F)) << "a canvas that is the frame";
    text.paths[1].types.resize(4);
    ASSERT_TRUE(outline.Read(text, {200, 100}));
    EXPECT_EQ(outline.Lines().size(), 1U) << "a curve that is cut short";
    text.paths.pop_back();
    EXPECT_FALSE(outline.Read(text, {200, 100}));
}

TEST(TextArcs, StayWithinTheBoxToTheSides) {
    const cv::Rect box(137, 77, 274, 154);
    for (const float phase : {-1.0F, -0.4F, 0.0F, 1.0F}) {
        const auto arcs = TextArcs(box, {548, 308}, {phase, phase, phase, phase, phase});
        for (const CurveLine& arc : arcs) {
            for (const cv::Point2f& p : {arc.start, arc.end, arc.control1, arc.control2}) {
                EXPECT_LE(std::abs(p.x), 0.5F);
            }
            EXPECT_EQ(arc.start.y, 0.0F);
            EXPECT_EQ(std::abs(arc.control1.y), 2.5F) << "two heights above or below";
            EXPECT_EQ(arc.control2.y, -arc.control1.y);
        }
    }
    EXPECT_FLOAT_EQ(TextArcs(box, {548, 308}, {})[3].control2.x, -0.1F);
}

}  // namespace
}  // namespace kelmo
