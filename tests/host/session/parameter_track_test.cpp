// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/session/parameter_track.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/session/host_error.h"

namespace kelmo::host {
namespace {

using testing::HasSubstr;

ParameterDescription Described(ParameterKind kind, double min = 0, double max = 0) {
    ParameterDescription parameter;
    parameter.name = "amount";
    parameter.kind = kind;
    parameter.min = min;
    parameter.max = max;
    return parameter;
}

ParameterTrack Track(const ParameterDescription& parameter, const char* text) {
    ParameterTrack track = ParameterTrack::Parse(parameter, text);
    track.Resolve({25, 1}, 101);
    return track;
}

std::string ErrorOf(const std::function<void()>& work) {
    try {
        work();
    } catch (const UsageError& error) {
        return error.what();
    }
    return "no error";
}

struct ValueCase {
    const char* text;
    double frame;
    double value;
};

class NumberTracks : public testing::TestWithParam<ValueCase> {};

TEST_P(NumberTracks, HaveTheValueOfTheMoment) {
    const ValueCase& c = GetParam();
    const ParameterTrack track = Track(Described(ParameterKind::kFloat, -100, 100), c.text);
    EXPECT_NEAR(track.NumberAt(c.frame), c.value, 1e-9) << c.text << " at " << c.frame;
}

INSTANTIATE_TEST_SUITE_P(
    Table, NumberTracks,
    testing::Values(ValueCase{"50", 0, 50}, ValueCase{"-3.5", 1000, -3.5},
                    ValueCase{"0@0s,100@2s", 0, 0}, ValueCase{"0@0s,100@2s", 25, 50},
                    ValueCase{"0@0s,100@2s", 50, 100}, ValueCase{"0@0s,100@2s", 99, 100},
                    ValueCase{"10@1s,20@2s", 3, 10}, ValueCase{"100@2s,0@0s", 25, 50},
                    ValueCase{"0@0%,100@100%", 100, 100}, ValueCase{"0@0f,100@50%", 25, 50},
                    ValueCase{" 0 @ 0s , 100 @ 2s ", 25, 50},
                    ValueCase{"0@0s,100@2s:linear", 25, 50}, ValueCase{"0@0s,100@2s:hold", 49, 0},
                    ValueCase{"0@0s,100@2s:hold", 50, 100}, ValueCase{"0@0s,64@2s:ease-in", 25, 8},
                    ValueCase{"0@0s,64@2s:ease-out", 25, 56},
                    ValueCase{"0@0s,64@2s:ease-in-out", 25, 32},
                    ValueCase{"0@0s,64@2s:ease-in-out", 12.5, 4}, ValueCase{"0@0,60@1:00", 750, 30},
                    ValueCase{"0@0,60@1:00:hold", 750, 0}));

TEST(ParameterTrack, ColoursChangeChannelByChannel) {
    const ParameterTrack track = Track(Described(ParameterKind::kColor), "#000000@0f,#FF8000@10f");
    EXPECT_EQ(static_cast<int>(track.NumberAt(5)), 0x804000);
    EXPECT_EQ(static_cast<int>(track.NumberAt(10)), 0xFF8000);
    EXPECT_EQ(static_cast<int>(Track(Described(ParameterKind::kColorEnd), "red").NumberAt(0)),
              0xFF0000);
}

TEST(ParameterTrack, ChoicesJump) {
    const ParameterTrack onOff = Track(Described(ParameterKind::kCheckBox, 0, 1), "off@0f,on@10f");
    EXPECT_EQ(onOff.NumberAt(9.9), 0);
    EXPECT_EQ(onOff.NumberAt(10), 1);
    const ParameterTrack place = Track(Described(ParameterKind::kPalace, 0, 8), "0@0f,8@10f");
    EXPECT_EQ(place.NumberAt(5), 0);
}

TEST(ParameterTrack, TextsAreTakenAsTheyStand) {
    EXPECT_EQ(Track(Described(ParameterKind::kText), "a@b, c=d").Text(), "a@b, c=d");
    EXPECT_EQ(Track(Described(ParameterKind::kListMask), "/tmp/a b.png").Text(), "/tmp/a b.png");
}

TEST(ParameterTrack, SaysWhatIsWrongWithAValue) {
    const ParameterDescription number = Described(ParameterKind::kFloat, 0, 10);
    const ParameterDescription color = Described(ParameterKind::kColor);
    const ParameterDescription box = Described(ParameterKind::kCheckBox, 0, 1);
    struct Case {
        const ParameterDescription& parameter;
        const char* text;
        const char* part;
    };
    for (const Case& c : std::vector<Case>{
             {number, "11", "goes from 0 to 10"},
             {number, "-0.1", "goes from 0 to 10"},
             {number, "five", "no number"},
             {number, "", "no number"},
             {number, "1@", "no time"},
             {number, "1@-2s", "no time"},
             {number, "1@2s,3", "has no time"},
             {number, "1@0s,2@1s,", "has no time"},
             {number, "1@0s,12@1s", "goes from 0 to 10"},
             {number, "1@2s:ease-inn", "did you mean \"ease-in\""},
             {number, "1@1s,2@25f", "two keyframes"},
             {color, "redd", "no colour"},
             {box, "maybe", "no switch"},
         }) {
        const std::string error = ErrorOf([&] { Track(c.parameter, c.text); });
        EXPECT_THAT(error, HasSubstr(c.part)) << c.text;
        EXPECT_THAT(error, HasSubstr("\"amount\"")) << c.text;
    }
}

TEST(ParameterTrack, ARangelessNumberStillFitsItsType) {
    EXPECT_THAT(ErrorOf([] { Track(Described(ParameterKind::kInteger), "3e9"); }),
                HasSubstr("too large"));
    EXPECT_EQ(Track(Described(ParameterKind::kFloat), "5000").NumberAt(0), 5000);
}

TEST(ParameterTrack, AssignmentsNameAKnownParameter) {
    EffectDescription effect;
    effect.name = "Glow";
    effect.guid = "G";
    effect.parameters = {Described(ParameterKind::kFloat, 0, 10)};
    EXPECT_EQ(ParseAssignment(effect, "amount=5").NumberAt(0), 5);
    EXPECT_THAT(ErrorOf([&] { ParseAssignment(effect, "amuont=5"); }),
                HasSubstr("did you mean \"amount\""));
    EXPECT_THAT(ErrorOf([&] { ParseAssignment(effect, "amount"); }), HasSubstr("name=value"));
    EXPECT_THAT(ErrorOf([&] { ParseAssignment(effect, "=5"); }), HasSubstr("name=value"));
}

}  // namespace
}  // namespace kelmo::host
