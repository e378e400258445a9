// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/cli/render/render_plan.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

#include "host/session/host_error.h"

namespace kelmo::host {
namespace {

using testing::HasSubstr;

ClipFacts Clip(double seconds, int width = 640, int height = 360, FrameRate rate = {25, 1}) {
    return {"clip.mp4", width, height, rate, seconds, false};
}

ClipFacts Still() {
    return {"still.png", 800, 600, {25, 1}, 0, true};
}

TimingWishes Transition() {
    TimingWishes wishes;
    wishes.transition = true;
    return wishes;
}

std::string ErrorOf(const TimingWishes& wishes, const std::vector<ClipFacts>& clips) {
    try {
        PlanRender(wishes, clips);
    } catch (const UsageError& error) {
        return error.what();
    }
    return "no error";
}

TEST(RenderPlan, AFilterTakesSizeRateAndLengthOfItsClip) {
    const RenderPlan plan = PlanRender({}, {Clip(2, 640, 360, {30000, 1001})});
    EXPECT_EQ(plan.width, 640);
    EXPECT_EQ(plan.height, 360);
    EXPECT_EQ(plan.rate.numerator, 30000);
    EXPECT_EQ(plan.frames, 60);
    EXPECT_EQ(plan.drawFrom, 0);
    EXPECT_EQ(plan.end, 60);
}

struct LengthCase {
    const char* start;
    const char* duration;
    int64_t maxFrames;
    bool still;
    int64_t frames;
    int64_t end;
    size_t warnings;
};

TEST(RenderPlan, LengthFollowsFromStartDurationAndFrames) {
    for (const LengthCase& c : std::vector<LengthCase>{
             {"", "", -1, false, 100, 100, 0},
             {"1s", "", -1, false, 75, 75, 0},
             {"50%", "", -1, false, 50, 50, 0},
             {"", "2s", -1, false, 50, 50, 0},
             {"1s", "10f", -1, false, 10, 10, 0},
             {"3s", "2s", -1, false, 25, 25, 1},
             {"", "", 7, false, 100, 7, 0},
             {"", "", 700, false, 100, 100, 0},
             {"", "", -1, true, 75, 75, 0},
             {"", "10s", -1, true, 250, 250, 0},
             {"9s", "", -1, true, 75, 75, 0},
         }) {
        TimingWishes wishes;
        wishes.start = ParseMoment(c.start);
        wishes.duration = ParseMoment(c.duration);
        wishes.maxFrames = c.maxFrames;
        const RenderPlan plan = PlanRender(wishes, {c.still ? Still() : Clip(4)});
        EXPECT_EQ(plan.frames, c.frames) << c.start << "/" << c.duration;
        EXPECT_EQ(plan.end, c.end) << c.start << "/" << c.duration;
        EXPECT_EQ(plan.warnings.size(), c.warnings) << c.start << "/" << c.duration;
    }
}

TEST(RenderPlan, ATransitionOverlapsTheEndOfOneClipWithTheBeginningOfTheNext) {
    TimingWishes wishes = Transition();
    wishes.start = ParseMoment("1s");
    const RenderPlan plan = PlanRender(wishes, {Clip(4), Clip(2)});
    EXPECT_EQ(plan.frames, 75 + 50 - 25);
    EXPECT_EQ(plan.transitionFirst, 50);
    EXPECT_EQ(plan.transitionFrames, 25);
    EXPECT_EQ(plan.clips[0].start, 1.0);
    EXPECT_TRUE(plan.clips[0].Covers(74));
    EXPECT_FALSE(plan.clips[0].Covers(75));
    EXPECT_FALSE(plan.clips[1].Covers(49));
    EXPECT_TRUE(plan.clips[1].Covers(50));
    EXPECT_TRUE(plan.clips[1].Covers(99));
}

TEST(RenderPlan, TheTransitionAloneStartsWhereItStartsInTheWhole) {
    TimingWishes wishes = Transition();
    wishes.transitionOnly = true;
    const RenderPlan plan = PlanRender(wishes, {Clip(4), Clip(2)});
    EXPECT_EQ(plan.frames, 25);
    EXPECT_EQ(plan.clips[0].start, 3.0);
    EXPECT_EQ(plan.clips[1].start, 0.0);
    EXPECT_EQ(plan.clips[1].firstFrame, 0);
}

TEST(RenderPlan, ATransitionIsCutToTheShorterClip) {
    TimingWishes wishes = Transition();
    wishes.duration = ParseMoment("5s");
    const RenderPlan plan = PlanRender(wishes, {Still(), Clip(2)});
    EXPECT_EQ(plan.transitionFrames, 50);
    EXPECT_EQ(plan.frames, 75);
    EXPECT_EQ(plan.warnings.size(), 1U);
}

TEST(RenderPlan, APictureShowsTheMiddleAfterALeadIn) {
    TimingWishes wishes;
    wishes.singlePicture = true;
    RenderPlan plan = PlanRender(wishes, {Clip(4)});
    EXPECT_EQ(plan.writeFrom, 50);
    EXPECT_EQ(plan.drawFrom, 25);
    EXPECT_EQ(plan.end, 51);
    wishes.at = ParseMoment("100%");
    wishes.leadIn = ParseMoment("0");
    plan = PlanRender(wishes, {Clip(4)});
    EXPECT_EQ(plan.writeFrom, 99);
    EXPECT_EQ(plan.drawFrom, 99);
    wishes.at = ParseMoment("0");
    EXPECT_EQ(PlanRender(wishes, {Still()}).writeFrom, 0);
    wishes.transition = true;
    wishes.at = {};
    plan = PlanRender(wishes, {Clip(4), Clip(4)});
    EXPECT_EQ(plan.frames, 25);
    EXPECT_EQ(plan.writeFrom, 12);
}

TEST(RenderPlan, SaysWhichWishCannotBeMet) {
    struct Case {
        const char* part;
        std::function<void(TimingWishes&, std::vector<ClipFacts>&)> change;
    };
    for (const Case& c : std::vector<Case>{
             {"takes one input", [](auto&, auto&clips) { clips.push_back(Clip(1)); }},
             {"needs two inputs", [](auto&wishes, auto&) { wishes.transition = true; }},
             {"--start is after", [](auto&w, auto&) { w.start = ParseMoment("4s"); }},
             {"shorter than one frame", [](auto&w, auto&) { w.duration = ParseMoment("0"); }},
             {"how long it is", [](auto&, auto&clips) { clips[0].seconds = 0; }},
             {"cannot be drawn", [](auto&, auto&clips) { clips[0].width = 20000; }},
             {"--at is after",
              [](auto&w, auto&) {
                  w.singlePicture = true;
                  w.at = ParseMoment("4s");
              }},
         }) {
        TimingWishes wishes;
        std::vector<ClipFacts> clips = {Clip(4)};
        c.change(wishes, clips);
        EXPECT_THAT(ErrorOf(wishes, clips), HasSubstr(c.part));
    }
}

TEST(RenderPlan, AnUnknownLengthIsNoProblemWhenADurationIsGiven) {
    TimingWishes wishes;
    wishes.duration = ParseMoment("2s");
    EXPECT_EQ(PlanRender(wishes, {Clip(0)}).frames, 50);
}

TEST(RenderPlan, KnowsPicturesByTheirEnding) {
    for (const char* picture : {"a.png", "dir.x/b.JPG", "c.webp", "d.tiff", "100%.png"}) {
        EXPECT_TRUE(IsPicturePath(picture)) << picture;
    }
    for (const char* other : {"a.mp4", "a%04d.png", "png", "a.png.mp4", "-"}) {
        EXPECT_FALSE(IsPicturePath(other)) << other;
    }
}

}  // namespace
}  // namespace kelmo::host
