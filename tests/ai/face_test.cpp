// SPDX-License-Identifier: GPL-3.0-or-later
// Faces of real photos: landmarks, angles, and how they behave over time.
#include <gmock/gmock.h>

#include <opencv2/imgproc.hpp>
#include <span>

#include "ai_session.h"

namespace kelmo::test {
namespace {

using Faces = PhotoTest;

using Face = AIDATA::HumanFaceInfo;

constexpr int kLeftRing[] = {52, 57, 73, 56, 55, 54, 72, 53};
constexpr int kRightRing[] = {58, 63, 76, 62, 61, 60, 75, 59};

cv::Point2f Mark(const Face& face, int index, cv::Size size) {
    return {face.landmarks[size_t(index)].first * size.width,
            face.landmarks[size_t(index)].second * size.height};
}

std::vector<cv::Point2f> Ring(const Face& face, std::span<const int> indices, cv::Size size) {
    std::vector<cv::Point2f> ring;
    for (int index : indices) ring.push_back(Mark(face, index, size));
    return ring;
}

/// The landmark that becomes `index` when the picture is mirrored.
int MirrorOf(int index) {
    static const std::vector<std::pair<int, int>> pairs = {
        {33, 42}, {34, 41}, {35, 40}, {36, 39}, {37, 38},  {47, 51}, {48, 50},   {52, 61},
        {53, 60}, {54, 59}, {55, 58}, {56, 63}, {57, 62},  {64, 71}, {65, 70},   {66, 69},
        {67, 68}, {72, 75}, {73, 76}, {74, 77}, {78, 79},  {80, 81}, {82, 83},   {84, 90},
        {85, 89}, {86, 88}, {91, 95}, {92, 94}, {96, 100}, {97, 99}, {101, 103}, {104, 105}};
    if (index <= 32) return 32 - index;
    for (const auto& [a, b] : pairs) {
        if (index == a) return b;
        if (index == b) return a;
    }
    return index;
}

float EyeDistance(const Face& face, cv::Size size) {
    const cv::Point2f between = Mark(face, 61, size) - Mark(face, 52, size);
    return std::hypot(between.x, between.y);
}

const Face* FaceAt(const AIDATA::HumanFaceInfoMultiDatas& data, float x, float y) {
    for (const Face& face : data.faces)
        if (x > face.rect[0] && x < face.rect[2] && y > face.rect[1] && y < face.rect[3])
            return &face;
    return nullptr;
}

void ExpectWellFormed(const Face& face, cv::Size size) {
    ASSERT_EQ(face.landmarks.size(), 106u);
    ASSERT_EQ(face.landmarkScores.size(), 106u);
    EXPECT_LT(face.rect[0], face.rect[2]);
    EXPECT_LT(face.rect[1], face.rect[3]);
    for (const auto& [ring, pupil] : {std::pair(std::span<const int>(kLeftRing), 74),
                                      std::pair(std::span<const int>(kRightRing), 77)}) {
        const std::vector<cv::Point2f> contour = Ring(face, ring, size);
        EXPECT_GT(cv::pointPolygonTest(contour, Mark(face, pupil, size), true),
                  -0.02 * EyeDistance(face, size));
        // The corners are the ends, and the ring runs round once.
        EXPECT_GT(cv::contourArea(contour), 0);
        EXPECT_LT(cv::contourArea(contour), 0.2 * std::pow(EyeDistance(face, size), 2));
    }
}

TEST_F(Faces, AreFoundWhereTheyAre) {
    const struct {
        const char* photo;
        std::vector<cv::Point2f> noses;  ///< seen by eye, fractions of the photo
    } cases[] = {
        {"astronaut.png", {{0.434f, 0.255f}}},
        {"people/sample1.jpg", {{0.26f, 0.39f}, {0.48f, 0.43f}, {0.81f, 0.26f}}},
        {"people/sample5.jpg",
         {{0.25f, 0.75f}, {0.77f, 0.40f}, {0.61f, 0.25f}, {0.45f, 0.18f}, {0.37f, 0.41f}}},
    };
    for (const auto& c : cases) {
        KELMO_NEED_PHOTO(photo, c.photo);
        for (const char* guid : {kFace, kFaceShock}) {
            const auto data = AiSession(guid).Faces(photo);
            ASSERT_NE(data, nullptr);
            EXPECT_EQ(data->faces.size(), c.noses.size()) << c.photo;
            for (const cv::Point2f& nose : c.noses)
                EXPECT_NE(FaceAt(*data, nose.x, nose.y), nullptr) << c.photo << nose;
            for (const Face& face : data->faces) ExpectWellFormed(face, photo.size());
            // The first of those that come together is the largest.
            for (size_t i = 1; i < data->faces.size(); ++i)
                EXPECT_GT(data->faces[0].rect[2] - data->faces[0].rect[0],
                          0.7f * (data->faces[i].rect[2] - data->faces[i].rect[0]));
        }
    }
}

TEST_F(Faces, OfAMirroredPhotoAreMirrored) {
    for (const char* name : {"astronaut.png", "people/sample3.jpg", "people/sample5.jpg"}) {
        KELMO_NEED_PHOTO(photo, name);
        const auto straight = AiSession(kFace).Faces(photo);
        const auto mirrored = AiSession(kFace).Faces(Mirrored(photo));
        ASSERT_EQ(straight->faces.size(), mirrored->faces.size());
        for (const Face& face : straight->faces) {
            const float x = (face.rect[0] + face.rect[2]) / 2,
                        y = (face.rect[1] + face.rect[3]) / 2;
            const Face* other = FaceAt(*mirrored, 1 - x, y);
            ASSERT_NE(other, nullptr);
            EXPECT_NEAR(other->yaw, -face.yaw, 4) << name;
            EXPECT_NEAR(other->roll, -face.roll, 4) << name;
            EXPECT_NEAR(other->pitch, face.pitch, 4) << name;
            const float unit = EyeDistance(face, photo.size());
            double sum = 0;
            for (int i = 0; i < 106; ++i) {
                cv::Point2f p = Mark(*other, MirrorOf(i), photo.size());
                p.x = static_cast<float>(photo.cols) - p.x;
                const cv::Point2f d = p - Mark(face, i, photo.size());
                EXPECT_LT(std::hypot(d.x, d.y), 0.2f * unit) << name << " landmark " << i;
                sum += std::hypot(d.x, d.y);
            }
            EXPECT_LT(sum / 106, 0.04 * unit) << name;
        }
    }
}

TEST_F(Faces, RollFollowsATurnedPhotoAndTheOtherAnglesStay) {
    const auto angles = [&](double clockwise) {
        cv::Mat turned;
        cv::warpAffine(astronaut, turned, cv::getRotationMatrix2D({222, 125}, -clockwise, 1.0),
                       astronaut.size());
        const auto data = AiSession(kFace).Faces(turned);
        return data->faces.empty() ? Face() : data->faces[0];
    };
    const Face straight = angles(0);
    for (double turn : {-40.0, -20.0, 20.0, 40.0}) {
        const Face face = angles(turn);
        EXPECT_NEAR(face.roll - straight.roll, turn, 3) << turn;
        EXPECT_NEAR(face.yaw, straight.yaw, 3) << turn;
        EXPECT_NEAR(face.pitch, straight.pitch, 3) << turn;
    }
}

TEST_F(Faces, AreNotSeenWhereThereAreNone) {
    AiSession session(kFace);
    for (uint64_t i = 0; i < 3; ++i) {
        const auto data = session.Faces(
            Noisy(cv::Mat(240, 320, CV_8UC4, cv::Scalar::all(120)), 20.0 * double(i), i));
        ASSERT_NE(data, nullptr);
        EXPECT_TRUE(data->faces.empty());
    }
}

TEST_F(Faces, KeepTheirNumberAndAreCalmWhileTheyRest) {
    AiSession session(kFace);
    double smoothed = 0, alone = 0;
    Face lastSmoothed, lastAlone;
    for (uint64_t i = 0; i < 12; ++i) {
        const cv::Mat frame = Noisy(astronaut, 6, i);
        const Face a = session.Faces(frame)->faces.at(0);
        const Face b = AiSession(kFace).Faces(frame)->faces.at(0);
        EXPECT_EQ(a.reserved, 1);
        for (int k = 0; k < 106 && i > 0; ++k) {
            smoothed += cv::norm(Mark(a, k, frame.size()) - Mark(lastSmoothed, k, frame.size()));
            alone += cv::norm(Mark(b, k, frame.size()) - Mark(lastAlone, k, frame.size()));
        }
        lastSmoothed = a;
        lastAlone = b;
    }
    EXPECT_LT(smoothed, 0.5 * alone);
    EXPECT_LT(smoothed / (11 * 106), 0.5);  // pixels, of a face of 90
}

TEST_F(Faces, FollowAMovingFaceWithoutLag) {
    AiSession session(kFace);
    Face followed, fresh;
    for (int i = 0; i < 12; ++i) {
        const cv::Mat frame = Moved(astronaut, float(i) * 6, float(i) * 2);
        followed = session.Faces(frame)->faces.at(0);
        fresh = AiSession(kFace).Faces(frame)->faces.at(0);
    }
    double sum = 0;
    for (int k = 0; k < 106; ++k)
        sum += cv::norm(Mark(followed, k, astronaut.size()) - Mark(fresh, k, astronaut.size()));
    EXPECT_LT(sum / 106, 2.0);  // pixels, of 6 a frame
}

TEST_F(Faces, AreTheSameForTheSameFramesAndFreshAfterACut) {
    const cv::Mat wall(astronaut.size(), CV_8UC4, cv::Scalar(30, 20, 10, 255));
    const auto marks = [](AiSession& session, const cv::Mat& frame) {
        return session.Faces(frame)->faces.at(0).landmarks;
    };
    AiSession session(kFace), again(kFace);
    const auto first = marks(session, astronaut);
    for (uint64_t i = 0; i < 6; ++i) {
        const cv::Mat frame = Noisy(Moved(astronaut, float(i), 0), 4, i);
        if (i == 0) marks(again, astronaut);
        const auto a = marks(session, frame);
        EXPECT_EQ(a, marks(again, frame));
        EXPECT_EQ(a, marks(session, frame)) << "the same frame again";
    }
    EXPECT_TRUE(session.Faces(wall)->faces.empty());
    EXPECT_EQ(marks(session, astronaut), first);
}

}  // namespace
}  // namespace kelmo::test
