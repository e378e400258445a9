// SPDX-License-Identifier: GPL-3.0-or-later
// Masks of real photos against outlines drawn by hand, and how they behave over time.
#include <gmock/gmock.h>

#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>
#include <thread>

#include "ai_session.h"

namespace kelmo::test {
namespace {

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

TEST(PersonMask, FollowsAnOutlineDrawnByHand) {
    KELMO_NEED_MODELS();
    KELMO_NEED_PHOTO(astronaut, "astronaut.png");
    const cv::Mat reference =
        cv::imread(KELMO_SOURCE_DIR "/tests/ai/data/astronaut_mask.png", cv::IMREAD_GRAYSCALE);
    ASSERT_FALSE(reference.empty());
    for (const cv::Size size : {cv::Size(256, 256), cv::Size(512, 512), cv::Size(960, 540)}) {
        cv::Mat scaled;
        cv::resize(reference, scaled, size, 0, 0, cv::INTER_NEAREST);
        for (const char* guid : {kMask, kEdgeMask})
            // What it misses: a dark corner beside the sleeve counts as hers.
            EXPECT_GT(Agreement(AiSession(guid).Mask(astronaut, size), scaled), 0.88) << size;
    }
}

TEST(PersonMask, TurnsWithAMirroredPicture) {
    KELMO_NEED_MODELS();
    KELMO_NEED_PHOTO(astronaut, "astronaut.png");
    const cv::Mat mask = AiSession(kMask).Mask(astronaut);
    const cv::Mat mirrored = AiSession(kMask).Mask(Mirrored(astronaut));
    EXPECT_GT(Agreement(Mirrored(mirrored), mask), 0.95);
}

TEST(PersonMask, IsEmptyWithoutAPerson) {
    KELMO_NEED_MODELS();
    cv::Mat ball(360, 640, CV_8UC4, cv::Scalar(200, 160, 120, 255));
    cv::circle(ball, {320, 200}, 120, cv::Scalar(40, 60, 220, 255), -1, cv::LINE_AA);
    cv::Mat noise = Noisy(cv::Mat(360, 640, CV_8UC4, cv::Scalar::all(128)), 60, 5);
    cv::Mat black(360, 640, CV_8UC4, cv::Scalar(0, 0, 0, 255));
    for (const cv::Mat& picture : {ball, noise, black})
        EXPECT_EQ(cv::countNonZero(AiSession(kMask).Mask(picture)), 0);
}

TEST(PersonMask, DoesNotOutliveThePerson) {
    KELMO_NEED_MODELS();
    KELMO_NEED_PHOTO(astronaut, "astronaut.png");
    AiSession session(kMask);
    EXPECT_GT(Area(session.Mask(astronaut)), 0.4);
    // The wall of the photo, without her.
    const cv::Mat wall(astronaut.size(), CV_8UC4, cv::Scalar(190, 195, 205, 255));
    EXPECT_EQ(cv::countNonZero(session.Mask(wall)), 0);
    EXPECT_EQ(cv::countNonZero(session.Mask(Noisy(wall, 3, 1))), 0);
    EXPECT_GT(Area(session.Mask(astronaut)), 0.4);
}

TEST(PersonMask, IsTheSameForTheSameFrames) {
    KELMO_NEED_MODELS();
    KELMO_NEED_PHOTO(astronaut, "astronaut.png");
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

TEST(PersonMask, RestsWhileAFrameIsRepeated) {
    KELMO_NEED_MODELS();
    KELMO_NEED_PHOTO(astronaut, "astronaut.png");
    AiSession session(kMask);
    session.Mask(astronaut);
    const cv::Mat shifted = Moved(astronaut, 5, 0);
    const cv::Mat once = session.Mask(shifted);
    EXPECT_EQ(cv::norm(once, session.Mask(shifted), cv::NORM_INF), 0);
}

TEST(PersonMask, IsCalmerThanEachFrameByItselfAndDoesNotLag) {
    KELMO_NEED_MODELS();
    KELMO_NEED_PHOTO(astronaut, "astronaut.png");
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

TEST(PersonMask, StartsAnewAfterACut) {
    KELMO_NEED_MODELS();
    KELMO_NEED_PHOTO(astronaut, "astronaut.png");
    KELMO_NEED_PHOTO(people, "people/sample1.jpg");
    cv::Mat other;
    cv::resize(people, other, astronaut.size(), 0, 0, cv::INTER_AREA);
    AiSession session(kMask);
    session.Mask(other);
    EXPECT_EQ(cv::norm(session.Mask(astronaut), AiSession(kMask).Mask(astronaut), cv::NORM_INF), 0);
}

TEST(PersonMask, EdgeParametersGrowShrinkAndFeather) {
    KELMO_NEED_MODELS();
    KELMO_NEED_PHOTO(astronaut, "astronaut.png");
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

TEST(PersonMask, TwoFiltersRunOnTwoThreads) {
    KELMO_NEED_MODELS();
    KELMO_NEED_PHOTO(astronaut, "astronaut.png");
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
