// SPDX-License-Identifier: GPL-3.0-or-later
// Masks of real photos against outlines drawn by hand, and how they behave over time.
#include <gmock/gmock.h>

#include <fstream>
#include <opencv2/imgproc.hpp>
#include <sstream>
#include <thread>

#include "ai_session.h"

namespace kelmo::test {
namespace {

using PersonMask = PhotoTest;

/// Intersection over union above half; where the reference says 128, both are right.
double Agreement(const cv::Mat& mask, const cv::Mat& reference) {
    const cv::Mat open = (reference > 64) & (reference < 192);
    const cv::Mat found = (mask > 127) & ~open, wanted = (reference > 192) & ~open;
    return double(cv::countNonZero(found & wanted)) / cv::countNonZero(found | wanted);
}

double MeanChange(const cv::Mat& a, const cv::Mat& b) {
    return cv::norm(a, b, cv::NORM_L1) / (255.0 * double(a.total()));
}

double Area(const cv::Mat& mask) {
    return cv::mean(mask)[0] / 255;
}

/// The outlines of tests/ai/data as a mask of `size`: 255 person, 128 unclear.
cv::Mat DrawOutlines(const std::string& name, cv::Size size) {
    std::ifstream file(KELMO_SOURCE_DIR "/tests/ai/data/" + name + ".outline");
    EXPECT_TRUE(file.is_open()) << name;
    cv::Mat mask(size, CV_8U, cv::Scalar(0));
    std::string line, kind;
    while (std::getline(file, line)) {
        std::istringstream words(line);
        if (!(words >> kind) || kind == "#") continue;
        std::vector<cv::Point> points;
        int x = 0, y = 0;
        char comma = 0;
        while (words >> x >> comma >> y)
            points.emplace_back(x * size.width / 960, y * size.width / 960);
        cv::fillPoly(mask, std::vector<std::vector<cv::Point>>{points},
                     kind == "person"    ? 255
                     : kind == "unclear" ? 128
                                         : 0);
    }
    return mask;
}

TEST_F(PersonMask, FollowsOutlinesDrawnByHand) {
    const cv::Rect2d whole(0, 0, 1, 1);
    const struct {
        const char* photo;
        const char* outlines;
        cv::Rect2d part;  ///< fractions of the photo
        double agreement;
    } cases[] = {
        {"astronaut.png", "astronaut", whole, 0.94},
        {"people/sample3.jpg", "sample3", whole, 0.90},  // a sofa beside them counts as theirs
        {"people/sample4.jpg", "sample4", whole, 0.90},  // a wall between two of them, too
        {"people/sample6.jpg", "sample6", whole, 0.92},
        {"astronaut.png", "astronaut", {0, 0, 1, 0.5625}, 0.94},
        {"astronaut.png", "astronaut", {0.1, 0, 0.5625, 1}, 0.97},
        // Wide pictures: squeezed into a square they gave 0.76 and 0.82.
        {"people/sample6.jpg", "sample6", {0, 0.078, 1, 0.703}, 0.93},
        {"people/sample3.jpg", "sample3", {0, 0.089, 1, 0.8}, 0.86},
        {"people/sample6.jpg", "sample6", {0.042, 0.0625, 0.423, 0.9375}, 0.95},
    };
    for (const auto& c : cases) {
        const cv::Mat photo = Photo(c.photo);
        if (photo.empty()) continue;
        const auto cut = [&](const cv::Mat& picture) {
            return picture(cv::Rect(cvRound(c.part.x * picture.cols),
                                    cvRound(c.part.y * picture.rows),
                                    cvFloor(c.part.width * picture.cols),
                                    cvFloor(c.part.height * picture.rows)))
                .clone();
        };
        const cv::Mat reference = cut(DrawOutlines(c.outlines, photo.size()));
        const cv::Mat picture = cut(photo);
        for (const char* guid : {kMask, kEdgeMask})
            EXPECT_GT(Agreement(AiSession(guid).Mask(picture), reference), c.agreement)
                << c.photo << " " << c.part;
        cv::Mat small;
        cv::resize(reference, small, {300, 200}, 0, 0, cv::INTER_NEAREST);
        EXPECT_GT(Agreement(AiSession(kMask).Mask(picture, small.size()), small),
                  c.agreement - 0.01)
            << c.photo << " " << c.part << ", a small mask";
    }
}

TEST_F(PersonMask, TurnsWithAMirroredPicture) {
    const cv::Mat mask = AiSession(kMask).Mask(astronaut);
    const cv::Mat mirrored = AiSession(kMask).Mask(Mirrored(astronaut));
    EXPECT_GT(Agreement(Mirrored(mirrored), mask), 0.95);
}

TEST_F(PersonMask, IsEmptyWithoutAPerson) {
    cv::Mat ball(360, 640, CV_8UC4, cv::Scalar(200, 160, 120, 255));
    cv::circle(ball, {320, 200}, 120, cv::Scalar(40, 60, 220, 255), -1, cv::LINE_AA);
    cv::Mat noise = Noisy(cv::Mat(360, 640, CV_8UC4, cv::Scalar::all(128)), 60, 5);
    cv::Mat black(360, 640, CV_8UC4, cv::Scalar(0, 0, 0, 255));
    for (const cv::Mat& picture : {ball, noise, black})
        EXPECT_EQ(cv::countNonZero(AiSession(kMask).Mask(picture)), 0);
}

TEST_F(PersonMask, DoesNotOutliveThePerson) {
    AiSession session(kMask);
    EXPECT_GT(Area(session.Mask(astronaut)), 0.4);
    // The wall of the photo, without her.
    const cv::Mat wall(astronaut.size(), CV_8UC4, cv::Scalar(190, 195, 205, 255));
    EXPECT_EQ(cv::countNonZero(session.Mask(wall)), 0);
    EXPECT_EQ(cv::countNonZero(session.Mask(Noisy(wall, 3, 1))), 0);
    EXPECT_GT(Area(session.Mask(astronaut)), 0.4);
}

TEST_F(PersonMask, IsTheSameForTheSameFrames) {
    std::vector<cv::Mat> first;
    for (int run = 0; run < 2; ++run) {
        AiSession session(kMask);
        for (size_t i = 0; i < 8; ++i) {
            const cv::Mat mask = session.Mask(Noisy(Moved(astronaut, float(i) * 2, 0), 4, i));
            if (run == 0)
                first.push_back(mask);
            else
                EXPECT_EQ(cv::norm(first[i], mask, cv::NORM_INF), 0) << i;
        }
    }
}

TEST_F(PersonMask, RestsWhileAFrameIsRepeated) {
    AiSession session(kMask);
    session.Mask(astronaut);
    const cv::Mat shifted = Moved(astronaut, 5, 0);
    const cv::Mat once = session.Mask(shifted);
    EXPECT_EQ(cv::norm(once, session.Mask(shifted), cv::NORM_INF), 0);
}

TEST_F(PersonMask, IsCalmerThanEachFrameByItselfAndDoesNotLag) {
    AiSession session(kMask);
    double smoothed = 0, alone = 0;
    cv::Mat lastSmoothed, lastAlone;
    for (uint64_t i = 0; i < 10; ++i) {
        const cv::Mat frame = Noisy(astronaut, 12, i);
        const cv::Mat a = session.Mask(frame), b = AiSession(kMask).Mask(frame);
        if (i > 0) {
            smoothed += MeanChange(a, lastSmoothed);
            alone += MeanChange(b, lastAlone);
        }
        lastSmoothed = a;
        lastAlone = b;
    }
    EXPECT_LT(smoothed, 0.8 * alone);

    AiSession moving(kMask);
    cv::Mat followed, fresh;
    for (int i = 0; i < 8; ++i) {
        const cv::Mat frame = Moved(astronaut, float(i) * 8, 0);
        followed = moving.Mask(frame);
        fresh = AiSession(kMask).Mask(frame);
    }
    EXPECT_GT(Agreement(followed, fresh), 0.97);
}

TEST_F(PersonMask, StartsAnewAfterACut) {
    KELMO_NEED_PHOTO(people, "people/sample1.jpg");
    cv::Mat other;
    cv::resize(people, other, astronaut.size(), 0, 0, cv::INTER_AREA);
    AiSession session(kMask);
    session.Mask(other);
    EXPECT_EQ(cv::norm(session.Mask(astronaut), AiSession(kMask).Mask(astronaut), cv::NORM_INF), 0);
}

TEST_F(PersonMask, EdgeParametersGrowShrinkAndFeather) {
    const auto with = [&](float thickness, float feather) {
        AiSession session(kEdgeMask);
        session.Set("Edge Thickness", thickness);
        session.Set("Edge Feather", feather);
        return session.Mask(astronaut);
    };
    const auto soft = [](const cv::Mat& mask) {
        return cv::countNonZero((mask > 5) & (mask < 250));
    };
    const cv::Mat plain = with(0, 0);
    EXPECT_GT(Area(with(30, 0)), Area(plain) + 0.02);
    EXPECT_LT(Area(with(-30, 0)), Area(plain) - 0.02);
    EXPECT_GT(soft(with(0, 60)), 2 * soft(plain));
    EXPECT_LT(soft(with(10, 0)), soft(plain));
    EXPECT_EQ(cv::norm(plain, AiSession(kMask).Mask(astronaut), cv::NORM_INF), 0);
}

TEST_F(PersonMask, TwoFiltersRunOnTwoThreads) {
    const cv::Mat alone = AiSession(kMask).Mask(astronaut);
    std::vector<std::thread> threads;
    for (int t = 0; t < 2; ++t)
        threads.emplace_back([&] {
            for (int i = 0; i < 5; ++i) {
                AiSession session(kMask);
                EXPECT_EQ(cv::norm(session.Mask(astronaut), alone, cv::NORM_INF), 0);
            }
        });
    for (std::thread& thread : threads) thread.join();
}

}  // namespace
}  // namespace kelmo::test
