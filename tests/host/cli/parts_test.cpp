// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

#include "cli_fixture.h"
#include "host/cli/commands/contact_sheet.h"
#include "host/cli/progress.h"
#include "host/cli/render/timeline_sound.h"
#include "host/session/host_error.h"

namespace kelmo::host {
namespace {

TEST(CrossFade, KeepsThePower) {
    for (const double fraction : {0.0, 0.25, 0.5, 0.9, 1.0}) {
        const FadeGains gains = CrossFade(fraction);
        EXPECT_NEAR(gains.first * gains.first + gains.second * gains.second, 1, 1e-12);
    }
    EXPECT_NEAR(CrossFade(-3).second, 0, 1e-12);
    EXPECT_NEAR(CrossFade(7).first, 0, 1e-12);
}

TEST_F(CliTest, EveryFrameHasExactlyItsSamples) {
    for (const FrameRate rate : {FrameRate{25, 1}, FrameRate{30000, 1001}, FrameRate{7, 1}}) {
        RenderPlan plan;
        plan.rate = rate;
        plan.clips = {{0, 100, 0}};
        TimelineSound sound(plan, {Path("dark.mkv")});
        int64_t sum = 0;
        for (int frame = 0; frame < 30; ++frame) {
            const int64_t count = static_cast<int64_t>(sound.Frame(frame).size() / 2);
            const double even = 44100.0 * rate.denominator / rate.numerator;
            EXPECT_LE(std::fabs(static_cast<double>(count) - even), 1) << "frame " << frame;
            sum += count;
        }
        EXPECT_EQ(sum, 30LL * rate.denominator * 44100 / rate.numerator);
    }
}

TEST_F(CliTest, SoundEndsInSilenceAndNeverWasIsSilenceToo) {
    RenderPlan plan;
    plan.rate = {10, 1};
    plan.clips = {{0, 60, 0}};
    TimelineSound sound(plan, {Path("dark.mkv")});
    EXPECT_TRUE(sound.Present());
    EXPECT_THAT(sound.Frame(5), testing::Contains(testing::Gt(6000)));
    EXPECT_THAT(sound.Frame(40), testing::Each(0));
    TimelineSound silent(plan, {Path("light.mkv")});
    EXPECT_FALSE(silent.Present());
    EXPECT_THAT(silent.Frame(3), testing::SizeIs(2 * 4410));
    EXPECT_THAT(silent.Frame(3), testing::Each(0));
}

Picture Flat(int width, int height, uint8_t grey, uint8_t alpha) {
    Picture picture;
    picture.Resize(width, height);
    for (size_t i = 0; i < picture.pixels.size(); ++i) {
        picture.pixels[i] = i % 4 == 3 ? alpha : grey;
    }
    return picture;
}

TEST(ContactSheet, PutsTilesInRowsWithNamesBelow) {
    ContactSheet sheet(3, 2, 40, 30);
    sheet.Add(Flat(80, 60, 200, 255), "first");
    sheet.Add(Flat(40, 30, 0, 0), "see-through");
    sheet.Add(Flat(40, 30, 100, 255), "a name that is much too long for its tile");
    const Picture& all = sheet.Sheet();
    EXPECT_EQ(all.width, 8 + 2 * 48);
    EXPECT_EQ(all.height, 8 + 2 * (30 + 22 + 8));
    EXPECT_EQ(all.Row(20)[20 * 4], 200);
    EXPECT_NE(all.Row(8)[56 * 4], all.Row(8)[(56 + 8) * 4]) << "a chequer";
    EXPECT_EQ(all.Row(8)[56 * 4 + 3], 255);
    EXPECT_EQ(all.Row(8 + 60 + 10)[20 * 4], 100);
    int inked = 0;
    for (int x = 8; x < 48; ++x) {
        for (int y = 38; y < 60; ++y) inked += all.Row(y)[x * 4] > 100 ? 1 : 0;
    }
    EXPECT_GT(inked, 20) << "the name is written";
    for (int y = 98; y < 120; ++y) EXPECT_EQ(all.Row(y)[52 * 4], 32) << "and stays in its tile";
}

TEST(ContactSheet, HasLimits) {
    EXPECT_THROW(ContactSheet(1, 1, 20000, 10), UsageError);
    EXPECT_GE(ContactSheet::GoodColumns(200, 240, 135), 10);
    EXPECT_EQ(ContactSheet::GoodColumns(1, 240, 135), 1);
}

TEST(Progress, TimesAreShort) {
    EXPECT_EQ(ShortTime(-1), "0 s");
    EXPECT_EQ(ShortTime(12.4), "12 s");
    EXPECT_EQ(ShortTime(185), "3:05");
    EXPECT_EQ(ShortTime(3723), "1:02:03");
}

}  // namespace
}  // namespace kelmo::host
