// SPDX-License-Identifier: GPL-3.0-or-later
#include "framework/textures/texture_frames.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <thread>

#include "contract/qor_host.h"
#include "support/recording_host.h"

namespace kelmo::test {

namespace {

cv::Mat Picture(int value) {
    return {1, 1, CV_8UC4, cv::Scalar::all(value)};
}

}  // namespace

TEST(FrameChoice, FramesPlayAt25ASecondInALoop) {
    struct Case {
        int32_t position;
        float rate;
        std::size_t count;
        std::size_t index;
    };
    const std::vector<Case> cases = {
        {0, 25.0F, 10, 0},    {30, 30.0F, 10, 5},
        {24, 30.0F, 100, 20}, {29, 30.0F, 100, 24},
        {7, 25.0F, 10, 7},    {10, 25.0F, 10, 0},
        {50, 12.5F, 7, 2},    {1, 50.0F, 10, 0},
        {-1, 50.0F, 10, 0},   {-1, 25.0F, 10, 9},
        {-30, 30.0F, 10, 5},  {-25, 25.0F, 25, 0},
        {12, 25.0F, 1, 0},    {5, 25.0F, 0, 0},
        {5, 0.0F, 10, 5},     {5, -3.0F, 10, 5},
        {5, NAN, 10, 5},      {INT32_MAX, 1e-30F, 3, WrapFrameIndex(999999986991104, 3)},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(FrameIndexAt(c.position, c.rate, c.count), c.index)
            << c.position << " at " << c.rate << " of " << c.count;
    }
}

TEST(FrameChoice, AnyMomentHasAFrame) {
    for (const float seconds : {0.0F, -1e30F, 1e30F, INFINITY, -INFINITY, NAN}) {
        EXPECT_LT(WrapFrameIndex(MaterialFrameCountAt(seconds), 3), 3U) << seconds;
    }
    EXPECT_LT(WrapFrameIndex(std::numeric_limits<int64_t>::min(), 7), 7U);
}

TEST(TextureFrames, WhatIsNotThereIsEmpty) {
    TextureFrames frames(2);
    EXPECT_EQ(frames.SlotCount(), 2U);
    EXPECT_EQ(frames.FrameCount(0), 0U);
    EXPECT_TRUE(frames.Frame(0, 0).empty());
    EXPECT_TRUE(frames.Frame(9, 9).empty());
    frames.Publish(1, 2).Store(1, Picture(5));
    EXPECT_TRUE(frames.Frame(1, 0).empty());
    EXPECT_FALSE(frames.Frame(1, 1).empty());
    EXPECT_TRUE(frames.Frame(1, 2).empty());
    frames.Publish(7, 1);
    EXPECT_EQ(frames.SlotCount(), 2U);
}

TEST(TextureFrames, AnElementSettlesOnce) {
    FrameList list(3);
    EXPECT_FALSE(list.IsSettled(0));
    EXPECT_TRUE(list.IsSettled(3));
    list.Store(0, Picture(1));
    list.Store(0, Picture(2));
    list.MarkFailed(0);
    EXPECT_EQ(list.Frame(0).at<uint8_t>(0), 1);
    list.MarkFailed(1);
    EXPECT_TRUE(list.IsSettled(1));
    list.Store(1, Picture(3));
    EXPECT_EQ(list.Frame(1).at<uint8_t>(0), 3);
    list.Truncate(5);
    EXPECT_EQ(list.Count(), 3U);
    list.Truncate(2);
    EXPECT_EQ(list.Count(), 2U);
    EXPECT_TRUE(list.Frame(2).empty());
}

TEST(TextureFrames, ReplacedListsKeepTheirPicturesAlive) {
    TextureFrames frames(1);
    frames.Publish(0, 1).Store(0, Picture(1));
    const cv::Mat& before = frames.Frame(0, 0);
    frames.Publish(0, 1).Store(0, Picture(2));
    EXPECT_EQ(before.at<uint8_t>(0), 1);
    EXPECT_EQ(frames.Frame(0, 0).at<uint8_t>(0), 2);
}

TEST(TextureFrames, MemoryIsCountedUpToALimit) {
    FrameList list(1);
    EXPECT_TRUE(list.ReserveBytes(60, 100));
    EXPECT_FALSE(list.ReserveBytes(41, 100));
    EXPECT_TRUE(list.ReserveBytes(40, 100));
    EXPECT_FALSE(list.ReserveBytes(std::numeric_limits<std::size_t>::max(), 100));
    EXPECT_TRUE(list.MarkFull());
    EXPECT_FALSE(list.MarkFull());
    EXPECT_EQ(FramesThatFit(744, 10000), 10U);
    EXPECT_EQ(FramesThatFit(1 << 20, 100), 1U);
}

TEST(TextureFrames, AReaderSeesThePlaceholderOrTheWholeClip) {
    TextureFrames frames(1);
    constexpr int kFrames = 200;
    frames.Publish(0, 2);
    std::thread loader([&frames] {
        FrameList& list = frames.Publish(0, kFrames);
        for (int i = 0; i < kFrames; ++i) {
            list.Store(static_cast<std::size_t>(i), Picture(i));
        }
    });
    int complete = 0;
    while (complete < kFrames) {
        const FrameList& list = frames.Slot(0);
        const std::size_t count = list.Count();
        ASSERT_TRUE(count == 2 || count == kFrames) << count;
        complete = 0;
        for (std::size_t i = 0; i < count; ++i) {
            const cv::Mat& picture = list.Frame(i);
            if (picture.empty()) continue;
            ASSERT_EQ(picture.at<cv::Vec4b>(0)[3], static_cast<uint8_t>(i));
            ++complete;
        }
    }
    loader.join();
}

TEST(WaitForFrame, ReturnsAtOnceWhenNothingIsToBeExpected) {
    AcquiredHost host;
    TextureFrames frames(3);
    FrameList& list = frames.Publish(0, 4);
    list.Store(0, Picture(9));
    list.MarkFailed(1);
    EXPECT_EQ(WaitForFrame(frames, 0, 0).at<uint8_t>(0), 9);
    EXPECT_EQ(WaitForFrame(frames, 0, -4).at<uint8_t>(0), 9);
    EXPECT_TRUE(WaitForFrame(frames, 0, 5).empty());
    EXPECT_TRUE(WaitForFrame(frames, 1, 0).empty());
    EXPECT_TRUE(WaitForFrame(frames, 8, 0).empty());
    EXPECT_THAT(host.Lines(), testing::IsEmpty());
}

TEST(WaitForFrame, TakesTheIndexFromTheListThatIsThereInTheEnd) {
    AcquiredHost host;
    TextureFrames frames(1);
    frames.Publish(0, 2);
    std::thread loader([&frames] {
        std::this_thread::sleep_for(std::chrono::milliseconds(30));
        auto list = std::make_unique<FrameList>(10);
        for (int i = 0; i < 10; ++i) list->Store(static_cast<std::size_t>(i), Picture(i));
        frames.Publish(0, std::move(list));
    });
    EXPECT_EQ(WaitForFrame(frames, 0, 17).at<uint8_t>(0), 7);
    loader.join();
    EXPECT_THAT(host.Texts(kLogInfo), testing::Each("WaitTexReaded"));
}

TEST(WaitForFrame, GivesUpOnceAndNeverWaitsForThatListAgain) {
    AcquiredHost host;
    TextureFrames frames(1);
    FrameList& list = frames.Publish(0, 2);
    EXPECT_TRUE(WaitForFrame(frames, 0, 0, 20).empty());
    EXPECT_THAT(host.Texts(kLogInfo), testing::ElementsAre("WaitTexReaded", "WaitTexReaded"));
    EXPECT_THAT(host.Texts(kLogWarning),
                testing::ElementsAre("Texture 0: no frame 0 after 20 ms, going on without it"));
    host.ClearLines();
    EXPECT_TRUE(WaitForFrame(frames, 0, 1).empty());
    EXPECT_THAT(host.Lines(), testing::IsEmpty());
    list.Store(1, Picture(4));
    EXPECT_EQ(WaitForFrame(frames, 0, 1).at<uint8_t>(0), 4);
}

}  // namespace kelmo::test
