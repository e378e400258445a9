// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/media/decode/media_reader.h"
#include "tests/host/media/clips.h"

namespace kelmo::host {
namespace {

using clips::ErrorOf;
using clips::FrameNumber;
using clips::Make;
using clips::Numbered;
using clips::OutputPath;
using testing::AllOf;
using testing::HasSubstr;

TEST(MediaDamage, WhatCannotBeOpenedIsNamedWithItsReason) {
    const std::string empty = OutputPath("empty.mp4");
    clips::WriteBytes(empty, {});
    const std::string text = OutputPath("text.mp4");
    clips::WriteBytes(text, std::vector<uint8_t>(5000, 'a'));
    const std::string words = OutputPath("words.txt");
    clips::WriteBytes(words, std::vector<uint8_t>(5000, 'b'));
    const std::string sound = Make("sound.wav", "-f lavfi -i sine=d=1");
    const std::string indexAtEnd = Make("whole.mp4", Numbered(50) + "-c:v libx264");
    const std::string noIndex = clips::Truncated(indexAtEnd, "no_index.mp4", 0.5);
    struct Case {
        std::string path;
        const char* reason;
    };
    const Case cases[] = {{OutputPath("nowhere.mp4"), "no such file"},
                          {OutputPath(""), "folder"},
                          {empty, "empty"},
                          {text, "no video"},
                          {words, "cannot read"},
                          {sound, "no pictures, only sound"},
                          {noIndex, "cut off"},
                          {OutputPath("missing%03d.png"), "pattern"},
                          {"http://localhost/x.mp4", "no such file"},
                          {"", "no such file"}};
    for (const Case& one : cases) {
        const std::string message = ErrorOf([&] { MediaReader::Open(one.path); });
        EXPECT_THAT(message, AllOf(HasSubstr("'" + one.path + "'"), HasSubstr(one.reason)));
    }
}

TEST(MediaDamage, AHugePictureIsRefused) {
    // A well-formed PNG header that announces 200000 x 200000 pixels.
    const std::string small = Make("small.png", "-f lavfi -i color=red:s=8x8 -frames:v 1");
    std::vector<uint8_t> bytes = clips::Bytes(small);
    for (size_t at : {size_t{16}, size_t{20}}) {
        bytes[at] = 0;
        bytes[at + 1] = 3;
        bytes[at + 2] = 0x0d;
        bytes[at + 3] = 0x40;
    }
    const std::string huge = OutputPath("huge.png");
    clips::WriteBytes(huge, bytes);
    EXPECT_THAT(ErrorOf([&] { MediaReader::Open(huge); }), HasSubstr(huge));

    auto reader = MediaReader::Open(small);
    EXPECT_THAT(ErrorOf([&] { reader->SetOutput(40000, 10, FitMode::kStretch); }),
                HasSubstr("too large"));
    EXPECT_THAT(ErrorOf([&] { reader->SetOutput(30000, 30000, FitMode::kStretch); }),
                HasSubstr("too large"));
    Picture picture;
    EXPECT_TRUE(reader->ReadFrameAt(0, picture));
    EXPECT_EQ(picture.width, 8);
}

TEST(MediaDamage, ATruncatedClipRepeatsItsLastGoodFrameAndSaysSo) {
    struct Case {
        const char* name;
        const char* arguments;
    };
    const Case cases[] = {
        {"cut.mkv", "-c:v libx264 -g 12 -crf 8"},
        {"cut.mp4", "-c:v libx264 -g 12 -crf 8 -movflags +faststart"},
        {"cut.avi", "-c:v mjpeg -q:v 2"},
    };
    for (const Case& one : cases) {
        // Noise below the number gives every frame about the same number of bytes.
        const std::string whole =
            Make(std::string("before_") + one.name,
                 Numbered(50) + "-vf \"noise=alls=3:allf=t\" " + one.arguments);
        const std::string path = clips::Truncated(whole, one.name, 0.5);
        auto reader = MediaReader::Open(path);
        Picture picture;
        int last = -1;
        for (int frame = 0; frame < 50; ++frame) {
            ASSERT_TRUE(reader->ReadFrameAt(frame / 25.0, picture)) << one.name;
            const int number = FrameNumber(picture);
            EXPECT_GE(number, last - 2) << one.name;
            last = std::max(last, number);
        }
        EXPECT_GT(last, 10) << one.name;
        EXPECT_LT(last, 40) << one.name;
        ASSERT_FALSE(reader->Warnings().empty()) << one.name;
        EXPECT_THAT(reader->Warnings().front(), HasSubstr(path));
        // And backwards again.
        ASSERT_TRUE(reader->ReadFrameAt(0.2, picture));
        EXPECT_NEAR(FrameNumber(picture), 5, 1) << one.name;
    }
}

TEST(MediaDamage, FlippedBytesNeitherCrashNorHang) {
    const std::string clips[] = {
        Make("flip.mp4", Numbered(30) + "-c:v libx264 -g 10 -movflags +faststart"),
        Make("flip.webm", Numbered(30) + "-c:v libvpx-vp9 -cpu-used 8 -deadline realtime"),
        Make("flip.png", "-f lavfi -i testsrc=s=64x48 -frames:v 1"),
        Make("flip.gif", "-f lavfi -i testsrc=s=64x48:r=10:d=1"),
        Make("flip.jpg", "-f lavfi -i testsrc=s=64x48 -frames:v 1")};
    for (const std::string& clip : clips) {
        const std::vector<uint8_t> whole = clips::Bytes(clip);
        for (unsigned seed = 0; seed < 12; ++seed) {
            std::vector<uint8_t> bytes = whole;
            unsigned state = seed * 2654435761u + 1;
            for (int i = 0; i < 20; ++i) {
                state = state * 1664525u + 1013904223u;
                bytes[(state >> 8) % bytes.size()] = static_cast<uint8_t>(state >> 24);
            }
            const std::string path =
                OutputPath("flipped" + std::filesystem::path(clip).extension().string());
            clips::WriteBytes(path, bytes);
            try {
                auto reader = MediaReader::Open(path);
                // A damaged header may announce any size; a real program scales it.
                reader->SetOutput(64, 48, FitMode::kLetterbox);
                Picture picture;
                for (double seconds : {0.0, 0.5, 1.1, 0.2, 60.0}) {
                    reader->ReadFrameAt(seconds, picture);
                    EXPECT_EQ(picture.width, 64);
                }
            } catch (const MediaError&) {
                // Refusing is fine.
            }
        }
    }
}

}  // namespace
}  // namespace kelmo::host
