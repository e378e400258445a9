// SPDX-License-Identifier: GPL-3.0-or-later
#include <atomic>
#include <condition_variable>
#include <mutex>
#include <set>
#include <thread>

#include "host/media/decode/frame_prefetcher.h"
#include "host/media/encode/frame_drain.h"
#include "tests/host/media/clips.h"

namespace kelmo::host {
namespace {

void Mark(Picture& picture, int64_t index) {
    picture.Resize(4, 4);
    picture.pixels[0] = static_cast<uint8_t>(index);
}

TEST(FramePrefetcher, GivesEveryFrameOnceAndInOrderFromAFewBuffers) {
    std::set<const uint8_t*> buffers;
    for (int depth : {0, 1, 3}) {
        buffers.clear();
        FramePrefetcher prefetcher(
            [](int64_t index, Picture& picture) {
                Mark(picture, index);
                return true;
            },
            100, depth);
        Picture picture;
        for (int i = 0; i < 100; ++i) {
            ASSERT_TRUE(prefetcher.Next(picture));
            ASSERT_EQ(picture.pixels[0], i);
            buffers.insert(picture.pixels.data());
        }
        EXPECT_FALSE(prefetcher.Next(picture));
        EXPECT_FALSE(prefetcher.Next(picture));
        EXPECT_LE(buffers.size(), static_cast<size_t>(std::max(depth, 1)) + 3);
    }
}

TEST(FramePrefetcher, WorksAheadButNotFurtherThanItsDepth) {
    std::mutex mutex;
    std::condition_variable changed;
    int64_t produced = 0;
    FramePrefetcher prefetcher(
        [&](int64_t index, Picture& picture) {
            Mark(picture, index);
            const std::lock_guard lock(mutex);
            produced = index + 1;
            changed.notify_all();
            return true;
        },
        -1, 2);
    std::unique_lock lock(mutex);
    // Two wait and one is ready to be put: all without a single Next.
    changed.wait(lock, [&] { return produced == 3; });
    lock.unlock();
    Picture picture;
    for (int i = 0; i < 10; ++i) ASSERT_TRUE(prefetcher.Next(picture));
    lock.lock();
    EXPECT_LE(produced, 13);
}

TEST(FramePrefetcher, EndsWhenItsSourceEndsOrThrows) {
    Picture picture;
    FramePrefetcher ending([](int64_t index, Picture& out) { return Mark(out, index), index < 3; },
                           -1);
    for (int i = 0; i < 3; ++i) EXPECT_TRUE(ending.Next(picture));
    EXPECT_FALSE(ending.Next(picture));

    FramePrefetcher throwing(
        [](int64_t index, Picture& out) -> bool {
            if (index == 2) throw MediaError(MediaError::Side::kInput, "broken");
            Mark(out, index);
            return true;
        },
        -1);
    EXPECT_TRUE(throwing.Next(picture));
    EXPECT_TRUE(throwing.Next(picture));
    EXPECT_EQ(clips::ErrorOf([&] { throwing.Next(picture); }), "broken");
    EXPECT_FALSE(throwing.Next(picture));
}

TEST(FramePrefetcher, MayBeLeftAtAnyMoment) {
    for (int taken = 0; taken < 6; ++taken) {
        FramePrefetcher prefetcher(
            [](int64_t index, Picture& out) { return Mark(out, index), true; }, -1, 2);
        Picture picture;
        for (int i = 0; i < taken; ++i) ASSERT_TRUE(prefetcher.Next(picture));
    }
}

TEST(FrameDrain, ConsumesEveryFrameOnceAndInOrder) {
    std::vector<int> consumed;
    std::set<const uint8_t*> buffers;
    FrameDrain drain([&](const Picture& picture) {
        consumed.push_back(picture.pixels[0]);
        buffers.insert(picture.pixels.data());
    });
    Picture picture;
    for (int i = 0; i < 100; ++i) {
        Mark(picture, i);
        drain.Put(picture);
    }
    drain.Finish();
    ASSERT_EQ(consumed.size(), 100u);
    for (int i = 0; i < 100; ++i) EXPECT_EQ(consumed[i], i);
    EXPECT_LE(buffers.size(), 6u);
    drain.Finish();
}

TEST(FrameDrain, AnErrorOfTheConsumerReachesTheProducer) {
    for (bool inFinish : {false, true}) {
        FrameDrain drain(
            [](const Picture& picture) {
                if (picture.pixels[0] == 3) {
                    throw MediaError(MediaError::Side::kOutput, "disk full");
                }
            },
            2);
        const std::string message = clips::ErrorOf([&] {
            Picture picture;
            for (int i = 0; i < (inFinish ? 4 : 100); ++i) {
                Mark(picture, i);
                drain.Put(picture);
            }
            drain.Finish();
        });
        EXPECT_EQ(message, "disk full");
    }
}

TEST(FrameDrain, CancelDropsWhatWaits) {
    std::atomic<int> consumed{0};
    std::atomic<bool> open{false};
    FrameDrain drain(
        [&](const Picture&) {
            ++consumed;
            while (!open) std::this_thread::yield();
        },
        3);
    Picture picture;
    for (int i = 0; i < 3; ++i) {
        Mark(picture, i);
        drain.Put(picture);
    }
    std::thread opener([&] {
        // Opens once the first frame is in work; Cancel has dropped the others or not by then, but
        // never waits for frames that nobody began.
        while (consumed == 0) std::this_thread::yield();
        open = true;
    });
    drain.Cancel();
    if (consumed == 0) ++consumed;  // cancelled before the first began: let the opener end
    opener.join();
    EXPECT_LE(consumed, 3);
}

TEST(FrameThreads, DecodeRenderAndEncodeRunBesideEachOther) {
    const std::string source =
        clips::Make("pipeline.mp4", clips::Numbered(40) + "-c:v libx264 -crf 8");
    const std::string path = clips::OutputPath("pipeline_out.mkv");
    auto reader = MediaReader::Open(source, {.threads = 1});
    WriterOptions options;
    options.width = reader->Info().width;
    options.height = reader->Info().height;
    options.videoCodec = "ffv1";
    options.threads = 1;
    auto writer = MediaWriter::Open(path, options);
    {
        FramePrefetcher input(
            [&](int64_t index, Picture& picture) {
                return reader->ReadFrameAt(static_cast<double>(index) / 25, picture);
            },
            40);
        FrameDrain output([&](const Picture& picture) { writer->WriteFrame(picture); });
        Picture picture;
        while (input.Next(picture)) {
            picture.Row(0)[0] = 0;  // something of our own between both
            output.Put(picture);
        }
        output.Finish();
    }
    writer->Finish();
    auto result = MediaReader::Open(path, {.threads = 1});
    Picture picture;
    for (int frame : {0, 17, 39}) {
        ASSERT_TRUE(result->ReadFrameAt(frame / 25.0, picture));
        EXPECT_EQ(clips::FrameNumber(picture), frame);
    }
}

}  // namespace
}  // namespace kelmo::host
