// SPDX-License-Identifier: GPL-3.0-or-later
// Body points of real photos.
#include <gmock/gmock.h>

#include <opencv2/imgproc.hpp>

#include "ai_session.h"

namespace kelmo::test {
namespace {

using Bodies = PhotoTest;

using Points = std::vector<std::pair<float, float>>;

TEST_F(Bodies, PointsStandInTheirOrder) {
    const auto data = AiSession(kPose).Bodies(astronaut);
    ASSERT_NE(data, nullptr);
    ASSERT_EQ(data->persons.size(), 1u);
    const Points& points = data->persons[0].points;
    ASSERT_EQ(points.size(), 19u);
    // Where they are, seen by eye. Her right side is on the left of the picture.
    const struct {
        size_t index;
        float x, y, tolerance;
    } seen[] = {
        {0, 0.434f, 0.25f, 0.03f},  // nose
        {1, 0.40f, 0.20f, 0.03f},   // right eye
        {2, 0.475f, 0.20f, 0.03f},  // left eye
        {5, 0.18f, 0.50f, 0.10f},   // right shoulder
        {6, 0.63f, 0.52f, 0.10f},   // left shoulder
        {3, 0.10f, 0.72f, 0.10f},   // right elbow
    };
    for (const auto& s : seen) {
        EXPECT_NEAR(points[s.index].first, s.x, s.tolerance) << s.index;
        EXPECT_NEAR(points[s.index].second, s.y, s.tolerance) << s.index;
    }
    // The right elbow and the right hand stand in two places.
    EXPECT_EQ(points[3], points[7]);
    EXPECT_EQ(points[4], points[9]);
    // Knees and feet are outside the picture.
    for (size_t index : {13u, 14u, 15u, 16u}) EXPECT_EQ(points[index], std::pair(-1.0f, -1.0f));
}

TEST_F(Bodies, OfAMirroredPhotoChangeSides) {
    const Points straight = AiSession(kPose).Bodies(astronaut)->persons.at(0).points;
    const Points mirrored = AiSession(kPose).Bodies(Mirrored(astronaut))->persons.at(0).points;
    for (const auto& [a, b] : {std::pair(0, 0), std::pair(1, 2), std::pair(2, 1), std::pair(5, 6),
                               std::pair(6, 5), std::pair(17, 18), std::pair(18, 17)}) {
        EXPECT_NEAR(1 - mirrored[size_t(a)].first, straight[size_t(b)].first, 0.06) << a;
        EXPECT_NEAR(mirrored[size_t(a)].second, straight[size_t(b)].second, 0.06) << a;
    }
}

TEST_F(Bodies, OfTwoPeopleApartAreTwo) {
    cv::Mat pair;
    cv::hconcat(astronaut, Mirrored(astronaut), pair);
    const auto data = AiSession(kPose).Bodies(pair);
    ASSERT_EQ(data->persons.size(), 2u);
    EXPECT_NE(data->persons[0].tag, data->persons[1].tag);
    std::vector<float> noses;
    for (const AIDATA::HumanPose& person : data->persons) noses.push_back(person.points[0].first);
    std::sort(noses.begin(), noses.end());
    EXPECT_NEAR(noses[0], 0.434f / 2, 0.03);
    EXPECT_NEAR(noses[1], 1 - 0.434f / 2, 0.03);
}

TEST_F(Bodies, AreNotSeenWhereThereAreNone) {
    const auto data =
        AiSession(kPose).Bodies(cv::Mat(240, 320, CV_8UC4, cv::Scalar(90, 120, 80, 255)));
    ASSERT_NE(data, nullptr);
    EXPECT_TRUE(data->persons.empty());
}

TEST_F(Bodies, AreCalmWhileTheyRestAndRepeat) {
    AiSession session(kPose), again(kPose);
    Points last, lastAlone;
    double smoothed = 0, alone = 0;
    for (uint64_t i = 0; i < 14; ++i) {
        const cv::Mat frame = Noisy(astronaut, 6, i);
        const auto data = session.Bodies(frame);
        ASSERT_EQ(data->persons.size(), 1u) << i;
        EXPECT_EQ(data->persons[0].tag, 1);
        const Points points = data->persons[0].points;
        EXPECT_EQ(points, again.Bodies(frame)->persons.at(0).points) << i;
        EXPECT_EQ(points, session.Bodies(frame)->persons.at(0).points) << "the same frame again";
        const Points fresh = AiSession(kPose).Bodies(frame)->persons.at(0).points;
        for (size_t k : {0u, 5u, 6u, 3u}) {
            if (i == 0) continue;
            smoothed +=
                std::hypot(points[k].first - last[k].first, points[k].second - last[k].second);
            alone += std::hypot(fresh[k].first - lastAlone[k].first,
                                fresh[k].second - lastAlone[k].second);
        }
        last = points;
        lastAlone = fresh;
    }
    EXPECT_LT(smoothed, 0.6 * alone);
}

}  // namespace
}  // namespace kelmo::test
