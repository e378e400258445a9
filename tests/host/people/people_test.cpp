// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "bindings/pose_block.h"
#include "host/people/clip_people.h"
#include "host/people/coverage.h"
#include "host/session/host_error.h"

namespace kelmo::host {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Pair;

AIDATA::HumanPose Body(int32_t tag, float x) {
    AIDATA::HumanPose body;
    body.tag = tag;
    body.points.assign(19, {-1.0F, -1.0F});
    // The hand, the eyes and an ear; the hand has two places.
    for (const size_t i : {1U, 2U, 4U, 9U, 18U}) body.points[i] = {x, 0.25F};
    return body;
}

BodyTrack Track() {
    BodyTrack track;
    track.clip = "a \"clip\".mp4";
    track.rate = {10, 1};
    track.frames = {
        {0, 0.0, {Body(7, 0.5F), Body(8, 0.125F)}}, {1, 0.1, {}}, {3, 0.3, {Body(7, 0.75F)}}};
    return track;
}

TEST(BodyTrack, ComesBackFromItsFile) {
    const BodyTrack read = ReadBodyTrack(ToJson(Track()), "p.json");
    ASSERT_EQ(read.frames.size(), 3U);
    EXPECT_EQ(read.rate.numerator, 10);
    EXPECT_EQ(read.frames[1].people.size(), 0U);
    EXPECT_DOUBLE_EQ(read.frames[2].time, 0.3);
    ASSERT_EQ(read.frames[0].people.size(), 2U);
    EXPECT_EQ(read.frames[0].people[1].tag, 8);
    for (size_t i = 0; i < 19; ++i) {
        EXPECT_EQ(read.frames[0].people[1].points[i], Body(8, 0.125F).points[i]) << i;
    }
}

TEST(BodyTrack, WrongFilesAreToldWithThePlace) {
    const auto frame = [](const std::string& content) {
        return R"({"frames": [{"time": 0}, {"time": 1, "bodies": )" + content + "}]}";
    };
    const std::pair<std::string, const char*> kCases[] = {
        {"", "parse error"},
        {"[1, 2", "parse error"},
        {"[]", "kelmo analyse"},
        {R"({"frames": 3})", "kelmo analyse"},
        {R"({"frameRate": [0, 1], "frames": []})", "not above 0"},
        {R"({"frameRate": 25, "frames": []})", "frameRate"},
        {R"({"frames": [7]})", R"("frames"[0]: no "time")"},
        {R"({"frames": [{"time": "now"}]})", R"("time" is no number)"},
        {frame("5"), R"("frames"[1]: "bodies" is no list)"},
        {frame("[{}]"), "without \"points\""},
        {frame(R"([{"points": {"elbow": [0, 0]}}])"), "name \"elbow\""},
        {frame(R"([{"points": {"nose": [0]}}])"), "\"nose\" is not [x, y]"},
        {frame(R"([{"points": {"nose": [0, "a"]}}])"), "nose is no number"},
        {frame(R"([{"tag": 1e20, "points": {}}])"), "too large"},
    };
    for (const auto& [text, part] : kCases) {
        SCOPED_TRACE(text);
        try {
            ReadBodyTrack(text, "p.json");
            ADD_FAILURE() << "was taken";
        } catch (const HostError& error) {
            EXPECT_THAT(error.what(), HasSubstr("p.json"));
            EXPECT_THAT(error.what(), HasSubstr(part));
        }
    }
    EXPECT_THROW(ReadBodyTrackFile("no such file"), HostError);
}

TEST(RecordedBodies, AreThoseOfTheFrameThatIsShown) {
    RecordedBodies recorded(Track());
    struct Case {
        double seconds;
        int bodies;  ///< -1: nothing known
    };
    for (const Case& c : std::vector<Case>{{-0.1, -1},
                                           {0, 2},
                                           {0.05, 2},
                                           {0.0999, 0},
                                           {0.1, 0},
                                           {0.19, 0},
                                           {0.2, -1},
                                           {0.3, 1},
                                           {0.39, 1},
                                           {0.5, -1}}) {
        SCOPED_TRACE(c.seconds);
        const auto* const found = recorded.Bodies(c.seconds, {});
        ASSERT_EQ(found != nullptr, c.bodies >= 0);
        if (found != nullptr) {
            EXPECT_EQ(static_cast<int>(found->size()), c.bodies);
        }
    }
}

TEST(BodyTrack, FollowsItsClipIntoAFrameOfAnotherShape) {
    BodyTrack track = Track();
    PlaceInFrame(track, FittedInto(64, 96, 640, 480), 64, 96);
    const auto& points = track.frames[0].people[1].points;
    EXPECT_THAT(points[1], Pair(0.125F, (24 + 0.25F * 48) / 96));
    EXPECT_THAT(points[0], Pair(-1.0F, -1.0F)) << "missing as before";
}

/// Counts how often it is asked; knows nothing of odd seconds.
class CountedBodies : public BodySource {
public:
    explicit CountedBodies(int& count) : asked(count) {}
    const std::vector<AIDATA::HumanPose>* Bodies(double seconds, const Picture&) override {
        ++asked;
        return static_cast<int>(seconds) % 2 == 0 ? &bodies : nullptr;
    }

private:
    int& asked;
    std::vector<AIDATA::HumanPose> bodies = {Body(3, 0.5F), Body(4, 0.25F)};
};

TEST(ClipPeople, HandsOverBlocksThatThePlugInReads) {
    int asked = 0;
    ClipPeople people(std::make_unique<CountedBodies>(asked));
    void* bytes = nullptr;
    int32_t length = 0;
    EXPECT_FALSE(people.GetPoseBlock(&bytes, &length)) << "no frame yet";
    const Picture picture;
    people.BeginFrame(0, picture, nullptr);
    EXPECT_EQ(asked, 0) << "nobody wanted to know";
    ASSERT_TRUE(people.GetPoseBlock(&bytes, &length));
    ASSERT_TRUE(people.GetPoseBlock(&bytes, &length));
    EXPECT_EQ(asked, 1);
    AIDATA::HumanPoseDatas read;
    ParsePoseBlock(static_cast<const uint8_t*>(bytes), static_cast<size_t>(length), read);
    ASSERT_EQ(read.persons.size(), 2U);
    EXPECT_EQ(read.persons[1].tag, 4);
    EXPECT_EQ(read.persons[1].points, Body(4, 0.25F).points);
    people.BeginFrame(1, picture, nullptr);
    EXPECT_FALSE(people.GetPoseBlock(&bytes, &length)) << "the block of the frame before is gone";
}

TEST(ClipPeople, TellsNaturalPlacesAndTheMaskOfTheFrame) {
    ClipPeople people(nullptr);
    PosePointReference eyes[2];
    people.GetPosePoint(1, &eyes[0]);
    people.GetPosePoint(2, &eyes[1]);
    EXPECT_NEAR(eyes[1].x - eyes[0].x, 0.05, 1e-9);
    EXPECT_EQ(eyes[0].y, eyes[1].y);
    for (const int unknown : {-1, 0, 19, 1 << 30}) {
        PosePointReference preset{7, 0.1, 0.2};
        people.GetPosePoint(unknown, &preset);
        EXPECT_EQ(preset.x, 0.1) << unknown;
    }
    void* pixels = nullptr;
    int32_t size[3] = {};
    Picture mask;
    mask.Resize(5, 3);
    people.BeginFrame(0, mask, &mask);
    ASSERT_TRUE(people.GetMaskImage(&pixels, &size[0], &size[1], &size[2]));
    EXPECT_EQ(pixels, mask.pixels.data());
    EXPECT_THAT(size, ElementsAre(5, 3, 20));
    people.BeginFrame(1, mask, nullptr);
    EXPECT_FALSE(people.GetMaskImage(&pixels, &size[0], &size[1], &size[2]));
}

TEST(Coverage, IsAlphaWhereThereIsAnyAndBrightnessOtherwise) {
    Picture picture;
    picture.Resize(2, 1);
    picture.pixels = {255, 255, 255, 255, 0, 0, 200, 255};
    ASSERT_EQ(ChooseCoverage(picture), CoverageChannel::kLuma);
    TurnIntoCoverage(picture, CoverageChannel::kLuma);
    EXPECT_THAT(picture.pixels, ElementsAre(255, 255, 255, 255, 60, 60, 60, 60));
    picture.pixels = {90, 90, 90, 255, 0, 0, 10, 40};
    ASSERT_EQ(ChooseCoverage(picture), CoverageChannel::kAlpha);
    TurnIntoCoverage(picture, CoverageChannel::kAlpha);
    EXPECT_THAT(picture.pixels, ElementsAre(255, 255, 255, 255, 40, 40, 40, 40));
}

TEST(AiLibrary, MissingOnesAreToldOnce) {
    EXPECT_THROW(AiLibrary("/no such folder", "/res"), HostError);
    std::vector<std::string> told;
    SeenBodies bodies("/no such folder", "/res",
                      [&](const std::string& reason) { told.push_back(reason); });
    for (int i = 0; i < 3; ++i) EXPECT_EQ(bodies.Bodies(i, {}), nullptr);
    ASSERT_EQ(told.size(), 1U);
    EXPECT_THAT(told[0], HasSubstr("qorAiFilterPlugin.qor"));
}

}  // namespace
}  // namespace kelmo::host
