// SPDX-License-Identifier: GPL-3.0-or-later
#include "framework/textures/texture_loader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <opencv2/imgcodecs.hpp>
#include <opencv2/videoio.hpp>

#include "contract/qor_host.h"
#include "framework/textures/texture_file.h"
#include "framework/textures/texture_video.h"
#include "support/recording_host.h"
#include "support/temporary_folder.h"

namespace kelmo::test {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::shared_ptr<NLEFilterInfo> InfoOf(const std::vector<std::string>& paths) {
    auto info = std::make_shared<NLEFilterInfo>();
    for (std::size_t i = 0; i < paths.size(); ++i) {
        info->AddTexture(static_cast<int32_t>(i), paths[i]);
    }
    info->textureCount = static_cast<int32_t>(paths.size());
    return info;
}

std::shared_ptr<TextureFrames> Load(const std::vector<std::string>& paths, bool async = false) {
    std::shared_ptr<TextureFrames> frames;
    std::shared_ptr<std::vector<TexDesc>> descs;
    LoadTextures(InfoOf(paths), frames, descs, async);
    return frames;
}

/// One slot with a limit.
std::shared_ptr<TextureFrames> LoadLimited(const std::string& path, std::size_t limit) {
    auto frames = std::make_shared<TextureFrames>(1);
    LoadTextureSlot(*InfoOf({path}), frames, false, 0, limit);
    return frames;
}

void WritePicture(const std::string& path, int value, int type = CV_8UC3, int side = 4) {
    ASSERT_TRUE(cv::imwrite(path, cv::Mat(side, side, type, cv::Scalar::all(value)))) << path;
}

/// "folder/name0000.png" and so on; the picture's value is its index + 1. Returns the path text.
std::string WriteSequence(const TemporaryFolder& folder, const std::string& name, int count) {
    for (int i = 0; i < count; ++i) {
        char number[16];
        std::snprintf(number, sizeof number, "%04d", i);
        WritePicture(folder.Path(name + number + ".png"), i + 1);
    }
    return folder.Path(name + "[" + std::to_string(count) + "].png");
}

/// Values of the frames of a slot, -1 for an empty one.
std::vector<int> Values(const TextureFrames& frames, std::size_t slot = 0) {
    std::vector<int> values;
    for (std::size_t i = 0; i < frames.FrameCount(slot); ++i) {
        const cv::Mat& frame = frames.Frame(slot, i);
        values.push_back(frame.empty() ? -1 : frame.data[0]);
    }
    return values;
}

/// A clip of 32 x 16 pixels, the top half white; false when OpenCV has no encoder for it here.
bool WriteClip(const std::string& path, int frameCount) {
    cv::VideoWriter writer(path, cv::VideoWriter::fourcc('m', 'p', '4', 'v'), 25, {32, 16});
    if (!writer.isOpened()) return false;
    cv::Mat frame(16, 32, CV_8UC3, cv::Scalar::all(0));
    frame.rowRange(0, 8).setTo(cv::Scalar::all(255));
    for (int i = 0; i < frameCount; ++i) writer.write(frame);
    return true;
}

/// What does not open with the usual decoder is offered to OpenCV's camera drivers, which look for
/// devices and leak: these tests do without them.
class DecodersOnly : public testing::Environment {
public:
    void SetUp() override {
        setenv("OPENCV_VIDEOIO_PRIORITY_GPHOTO2", "0", 1);
        setenv("OPENCV_VIDEOIO_PRIORITY_GSTREAMER", "0", 1);
    }
};
[[maybe_unused]] const auto* const decodersOnly =
    testing::AddGlobalTestEnvironment(new DecodersOnly);

constexpr const char* kNoEncoder = "OpenCV writes no mp4v clips on this system";

}  // namespace

TEST(TextureLoader, ADescriptionWithoutTexturesLeavesEverythingAlone) {
    auto frames = std::make_shared<TextureFrames>(1);
    auto descs = std::make_shared<std::vector<TexDesc>>(5);
    const auto framesBefore = frames;
    LoadTextures(InfoOf({}), frames, descs, false);
    EXPECT_EQ(frames, framesBefore);
    EXPECT_EQ(descs->size(), 5U);
}

TEST(TextureLoader, EverySlotGetsItsFramesAndTwoZeroWords) {
    const TemporaryFolder folder;
    AcquiredHost host;
    WritePicture(folder.Path("one.png"), 77);
    WritePicture(folder.Path("open[bracket.png"), 66);
    WritePicture(folder.Path("dot.png"), 55, CV_8UC1, 1);
    const std::string sequence = WriteSequence(folder, "a", 3);
    std::shared_ptr<TextureFrames> frames;
    std::shared_ptr<std::vector<TexDesc>> descs;
    LoadTextures(InfoOf({folder.Path("one.png"), sequence, folder.Path("open[bracket.png"),
                         folder.Path("none[0].png"), folder.Path("none[-3].png"),
                         folder.Path("none[x].png"), folder.Path("dot.png")}),
                 frames, descs, false);
    ASSERT_EQ(frames->SlotCount(), 7U);
    EXPECT_THAT(Values(*frames, 0), ElementsAre(77));
    EXPECT_THAT(Values(*frames, 1), ElementsAre(1, 2, 3));
    EXPECT_THAT(Values(*frames, 2), ElementsAre(66));
    for (const std::size_t empty : {3U, 4U, 5U}) EXPECT_EQ(frames->FrameCount(empty), 0U);
    EXPECT_EQ(frames->Frame(6, 0).size(), cv::Size(1, 1));
    EXPECT_EQ(MaterialView::Of(frames->Frame(6, 0)).step, 4);
    ASSERT_EQ(descs->size(), 7U);
    for (const TexDesc& desc : *descs) EXPECT_EQ(desc.word0 | desc.word1, 0);
    EXPECT_THAT(host.Lines(), IsEmpty());
}

TEST(TextureLoader, BrokenFilesLeaveTheirElementEmptyAndTheRestGoesOn) {
    const TemporaryFolder folder;
    AcquiredHost host;
    const std::string sequence = WriteSequence(folder, "a", 4);
    const std::string broken = folder.Write("a0002.png", "broken");
    const auto frames = Load({sequence, folder.Path("missing.mp4")});
    EXPECT_THAT(Values(*frames, 0), ElementsAre(1, 2, -1, 4));
    EXPECT_THAT(Values(*frames, 1), ElementsAre(-1));
    EXPECT_TRUE(frames->Slot(1).IsSettled(0));
    EXPECT_THAT(host.Texts(kLogError), testing::UnorderedElementsAre(
                                           "Load Texture Failed: " + broken,
                                           "can not open the video:" + folder.Path("missing.mp4")));
}

TEST(TextureLoader, SeveralNumberedClipsAreReadAsPictures) {
    const TemporaryFolder folder;
    AcquiredHost host;
    const auto frames = Load({folder.Path("pic[2].mp4")});
    EXPECT_EQ(frames->FrameCount(0), 2U);
    EXPECT_THAT(host.Texts(kLogError), testing::UnorderedElementsAre(
                                           "Load Texture Failed: " + folder.Path("pic0000.mp4"),
                                           "Load Texture Failed: " + folder.Path("pic0001.mp4")));
}

TEST(TextureLoader, AFileThatThrowsIsReadAgainAloneAndSpoilsNothingElse) {
    // The colour conversion knows no pictures of 64-bit floats.
    for (const bool async : {false, true}) {
        const TemporaryFolder folder;
        AcquiredHost host;
        WritePicture(folder.Path("a0000.tiff"), 1);
        WritePicture(folder.Path("a0001.tiff"), 2, CV_64FC1);
        WritePicture(folder.Path("a0002.tiff"), 3);
        const auto frames = Load({folder.Path("a[3].tiff")}, async);
        for (int i = 0; i < 3; ++i) WaitForFrame(*frames, 0, i);
        EXPECT_THAT(Values(*frames), ElementsAre(1, -1, 3));
        ASSERT_TRUE(StopTextureLoaders());
        const std::vector<std::string> errors = host.Texts(kLogError);
        ASSERT_GE(errors.size(), 2U);
        EXPECT_THAT(errors[0], testing::StartsWith(async ? "parallelReadImageInvoker task:"
                                                         : "parallelReadImageInvoker:"));
        EXPECT_EQ(errors[1], "Load Texture Failed: " + folder.Path("a0001.tiff"));
    }
}

TEST(TextureLoader, LongSequencesLoopOverWhatFits) {
    const TemporaryFolder folder;
    AcquiredHost host;
    const std::string sequence = WriteSequence(folder, "a", 20);
    // Pictures of 64 bytes, 256 more each for their administration.
    const auto frames = LoadLimited(sequence, 5 * 320);
    EXPECT_THAT(Values(*frames), ElementsAre(1, 2, 3, 4, 5));
    EXPECT_THAT(host.Texts(kLogWarning),
                ElementsAre("The sequence " + folder.Path("a0000.png") +
                            " has 20 pictures of 4 x 4: only 5 fit into 0 MiB"));
}

TEST(TextureLoader, PicturesBeyondTheLimitAreLeftOutWithOneLine) {
    const TemporaryFolder folder;
    AcquiredHost host;
    const std::string sequence = WriteSequence(folder, "a", 6);
    const auto frames = LoadLimited(sequence, 3 * 64);
    const std::vector<int> values = Values(*frames);
    EXPECT_EQ(values.size(), 6U);
    EXPECT_EQ(std::count(values.begin(), values.end(), -1), 3);
    EXPECT_EQ(host.Texts(kLogWarning).size(), 1U);
    for (std::size_t i = 0; i < 6; ++i) EXPECT_TRUE(frames->Slot(0).IsSettled(i));
}

TEST(TextureLoader, StillsAreReversedInRowsAndClipsAreNot) {
    const TemporaryFolder folder;
    const std::string clip = folder.Path("clip.mp4");
    if (!WriteClip(clip, 5)) GTEST_SKIP() << kNoEncoder;
    cv::Mat picture(16, 32, CV_8UC3, cv::Scalar::all(0));
    picture.rowRange(0, 8).setTo(cv::Scalar::all(255));
    ASSERT_TRUE(cv::imwrite(folder.Path("still.png"), picture));
    const auto frames = Load({folder.Path("still.png"), clip});
    const auto top = [&frames](std::size_t slot) {
        return static_cast<int>(frames->Frame(slot, 0).at<cv::Vec4b>(1, 4)[1]);
    };
    EXPECT_LT(top(0), 60);
    EXPECT_GT(top(1), 190);
    ASSERT_EQ(frames->FrameCount(1), 5U);
    EXPECT_EQ(frames->Frame(1, 4).type(), CV_8UC4);
    EXPECT_EQ(frames->Frame(1, 4).at<cv::Vec4b>(1, 4)[3], 255);
    EXPECT_NE(frames->Frame(1, 0).data, frames->Frame(1, 1).data);
}

TEST(TextureLoader, ANumberedNameOfOneClipTakesTheVideoRoad) {
    const TemporaryFolder folder;
    if (!WriteClip(folder.Path("clip0000.mp4"), 3)) GTEST_SKIP() << kNoEncoder;
    EXPECT_EQ(Load({folder.Path("clip[1].mp4")})->FrameCount(0), 3U);
}

TEST(TextureLoader, LongClipsAreCutAtTheLimit) {
    const TemporaryFolder folder;
    const std::string clip = folder.Path("clip.mp4");
    if (!WriteClip(clip, 12)) GTEST_SKIP() << kNoEncoder;
    AcquiredHost host;
    const auto frames = LoadLimited(clip, 4 * (32 * 16 * 4 + 256));
    EXPECT_EQ(frames->FrameCount(0), 4U);
    EXPECT_FALSE(frames->Frame(0, 3).empty());
    EXPECT_THAT(
        host.Texts(kLogWarning),
        ElementsAre("The video " + clip + " has 12 frames of 32 x 16: only 4 fit into 0 MiB"));
}

TEST(TextureLoader, AFileThatIsNoClipLeavesOneFailedElement) {
    const TemporaryFolder folder;
    AcquiredHost host;
    const auto frames = Load({folder.Write("text.mp4", "this is no clip")});
    EXPECT_THAT(host.Texts(kLogError),
                ElementsAre("can not open the video:" + folder.Path("text.mp4")));
    ASSERT_EQ(frames->FrameCount(0), 1U);
    EXPECT_TRUE(frames->Slot(0).IsSettled(0));
}

TEST(TextureLoader, AClipThatEndsEarlyFailsTheFramesThatItDoesNotDeliver) {
    const TemporaryFolder folder;
    const std::string clip = folder.Path("a.mp4.avi");
    {
        cv::VideoWriter writer(clip, cv::VideoWriter::fourcc('M', 'J', 'P', 'G'), 25, {64, 64});
        if (!writer.isOpened()) GTEST_SKIP() << "OpenCV writes no MJPG clips on this system";
        cv::Mat frame(64, 64, CV_8UC3);
        for (int i = 0; i < 10; ++i) {
            // Noise, so that the frames outweigh the head of the file.
            cv::randu(frame, 0, 256);
            writer.write(frame);
        }
    }
    std::filesystem::resize_file(clip, std::filesystem::file_size(clip) * 2 / 3);
    const auto frames = Load({clip});
    ASSERT_EQ(frames->FrameCount(0), 10U);
    EXPECT_FALSE(frames->Frame(0, 0).empty());
    EXPECT_TRUE(frames->Frame(0, 9).empty());
    EXPECT_TRUE(frames->Slot(0).IsSettled(9));
}

TEST(TextureLoader, SequencesAndClipsLoadInTheBackground) {
    const TemporaryFolder folder;
    const std::string clip = folder.Path("clip.mp4");
    const bool hasClip = WriteClip(clip, 6);
    const std::string sequence = WriteSequence(folder, "a", 30);
    folder.Write("a0007.png", "broken");
    AcquiredHost host;
    const auto frames = Load({sequence, hasClip ? clip : folder.Path("missing.mp4")}, true);
    EXPECT_EQ(frames->FrameCount(0), 30U);
    for (int i = 29; i >= 0; --i) {
        const cv::Mat& frame = WaitForFrame(*frames, 0, i);
        EXPECT_EQ(frame.empty() ? -1 : frame.data[0], i == 7 ? -1 : i + 1);
    }
    EXPECT_EQ(WaitForFrame(*frames, 1, 5).empty(), !hasClip);
    EXPECT_EQ(frames->FrameCount(1), hasClip ? 6U : 1U);
    EXPECT_TRUE(StopTextureLoaders());
}

TEST(TextureLoader, ASingleStillLoadsAtOnceInTheBackgroundModeToo) {
    const TemporaryFolder folder;
    WritePicture(folder.Path("one.png"), 77);
    EXPECT_THAT(Values(*Load({folder.Path("one.png")}, true)), ElementsAre(77));
}

TEST(TextureLoader, ALoaderStopsWhenItsEffectIsGoneAndAtTheEnd) {
    const TemporaryFolder folder;
    AcquiredHost host;
    // Hundreds of files that are all missing: each leaves a line while somebody waits for it.
    const std::string sequence = folder.Path("gone[20000].png");
    const std::weak_ptr<TextureFrames> gone = Load({sequence}, true)->weak_from_this();
    const auto kept = Load({sequence}, true);
    ASSERT_TRUE(WaitForOrphanedLoaders());
    EXPECT_TRUE(gone.expired());
    EXPECT_FALSE(kept->Slot(0).IsSettled(kept->FrameCount(0) - 1)) << "its effect lives";
    ASSERT_TRUE(StopTextureLoaders());
    EXPECT_LT(host.Texts(kLogError).size(), 40000U);
    for (std::size_t i = 0; i < kept->FrameCount(0); ++i) {
        ASSERT_TRUE(kept->Slot(0).IsSettled(i)) << i;
    }
    // Loaders that start afterwards are not affected.
    const std::string shortSequence = WriteSequence(folder, "b", 2);
    EXPECT_FALSE(WaitForFrame(*Load({shortSequence}, true), 0, 1).empty());
    EXPECT_TRUE(StopTextureLoaders());
}

}  // namespace kelmo::test
