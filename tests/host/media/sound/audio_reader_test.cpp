// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/media/sound/audio_reader.h"

#include <random>

#include "tests/host/media/clips.h"

namespace kelmo::host {
namespace {

using clips::Make;
using clips::OutputPath;

std::vector<int16_t> Read(AudioReader& reader, int64_t first, int count) {
    std::vector<int16_t> samples(2 * static_cast<size_t>(count), 12345);
    reader.Read(first, count, samples.data());
    return samples;
}

// A sample that says where it is: the left side counts, the right side counts backwards.
int16_t Left(int64_t i) {
    return static_cast<int16_t>(i * 37 % 30000);
}
int16_t Right(int64_t i) {
    return static_cast<int16_t>(-(i * 11 % 30000));
}

constexpr int kSamples = 3 * 44100;

std::string CountingSamples() {
    std::vector<uint8_t> raw;
    for (int i = 0; i < kSamples; ++i) {
        for (int16_t value : {Left(i), Right(i)}) {
            raw.push_back(static_cast<uint8_t>(value & 255));
            raw.push_back(static_cast<uint8_t>(value >> 8 & 255));
        }
    }
    const std::string path = OutputPath("counting.raw");
    clips::WriteBytes(path, raw);
    return "-f s16le -ar 44100 -ac 2 -i '" + path + "' ";
}

TEST(AudioReader, LosslessSoundIsExactToTheSampleWhereverOneReads) {
    const std::string video = "-f lavfi -i color=s=32x32:d=3 -map 0 -map 1 -c:v libx264 ";
    const std::string files[] = {Make("exact.wav", CountingSamples() + "-c:a pcm_s16le"),
                                 Make("exact.flac", CountingSamples() + "-c:a flac"),
                                 Make("exact.mov", CountingSamples() + video + "-c:a pcm_s16le"),
                                 Make("exact.mkv", CountingSamples() + video + "-c:a flac"),
                                 Make("exact.avi", CountingSamples() + video + "-c:a pcm_s16le")};
    for (const std::string& path : files) {
        auto reader = AudioReader::Open(path);
        EXPECT_TRUE(reader->Info().present);
        EXPECT_EQ(reader->Info().sourceRate, 44100);
        EXPECT_NEAR(reader->Info().duration, 3, 0.1) << path;
        std::mt19937 random(5);
        // In order, then anywhere, also across both ends.
        for (int i = 0; i < 60; ++i) {
            const int64_t first =
                i < 30 ? int64_t{i} * 1764 : static_cast<int64_t>(random() % 140000) - 3000;
            const int count = i < 30 ? 1764 : 1 + static_cast<int>(random() % 5000);
            const std::vector<int16_t> got = Read(*reader, first, count);
            for (int k = 0; k < count; ++k) {
                const int64_t at = first + k;
                const bool inside = at >= 0 && at < kSamples;
                ASSERT_EQ(got[2 * k], inside ? Left(at) : 0) << path << " sample " << at;
                ASSERT_EQ(got[2 * k + 1], inside ? Right(at) : 0) << path << " sample " << at;
            }
        }
        EXPECT_THAT(reader->Warnings(), testing::IsEmpty());
    }
}

TEST(AudioReader, MonoIsDoubledAtFullLoudness) {
    const std::string path =
        Make("mono.wav", "-f lavfi -i \"aevalsrc=0.5*sin(2*PI*441*t):s=44100:d=1\"");
    auto reader = AudioReader::Open(path);
    EXPECT_EQ(reader->Info().sourceChannels, 1);
    const std::vector<int16_t> got = Read(*reader, 1000, 2000);
    for (int k = 0; k < 2000; ++k) {
        ASSERT_EQ(got[2 * k], got[2 * k + 1]);
        ASSERT_NEAR(got[2 * k], 16384 * std::sin(2 * M_PI * 441 * (1000 + k) / 44100.0), 2) << k;
    }
}

TEST(AudioReader, SurroundIsMixedDownAndEverySpeakerIsOnItsSide) {
    // Order of the channels: FL FR FC LFE SL SR.
    struct Case {
        int channel;
        bool left, right;
    };
    for (const Case& one : {Case{0, true, false}, Case{1, false, true}, Case{2, true, true},
                            Case{4, true, false}, Case{5, false, true}}) {
        std::string channels;
        for (int i = 0; i < 6; ++i) {
            channels += i == one.channel ? "0.9*sin(2*PI*440*t)" : "0";
            if (i < 5) channels += "|";
        }
        const std::string path = Make(
            "surround.wav", "-f lavfi -i \"aevalsrc=" + channels + ":s=44100:d=0.5:c=5.1(side)\"");
        auto reader = AudioReader::Open(path);
        EXPECT_EQ(reader->Info().sourceChannels, 6);
        const std::vector<int16_t> got = Read(*reader, 4000, 4000);
        int left = 0, right = 0;
        for (int k = 0; k < 4000; ++k) {
            left = std::max<int>(left, std::abs(got[2 * k]));
            right = std::max<int>(right, std::abs(got[2 * k + 1]));
        }
        EXPECT_EQ(left > 5000, one.left) << "channel " << one.channel << ": " << left;
        EXPECT_EQ(right > 5000, one.right) << "channel " << one.channel << ": " << right;
        EXPECT_EQ(left < 100, !one.left) << "channel " << one.channel << ": " << left;
        EXPECT_EQ(right < 100, !one.right) << "channel " << one.channel << ": " << right;
    }
}

// The sample of the largest value in [0, seconds).
int64_t Peak(AudioReader& reader, double seconds) {
    const int count = static_cast<int>(seconds * reader.SamplesPerSecond());
    const std::vector<int16_t> got = Read(reader, 0, count);
    int64_t best = 0;
    for (int k = 0; k < count; ++k) {
        if (std::abs(got[2 * k]) > std::abs(got[2 * best])) best = k;
    }
    return best;
}

// A short swing of 2 kHz whose top lies at one second.
const std::string kClick =
    "-f lavfi -i \"aevalsrc='0.9*cos(2*PI*2000*(t-1))*exp(-pow((t-1)*2000,2))':s=48000:d=2\" ";
const std::string kVideo = "-f lavfi -i color=s=32x32:d=2:r=25 -map 0 -map 1 -c:v libx264 ";

TEST(AudioReader, SoundKeepsItsPlaceThroughResamplingAndCodecDelay) {
    struct Case {
        const char* name;
        std::string arguments;
        double seconds;  // where the click belongs
    };
    const Case cases[] = {
        {"click.wav", kClick, 1},
        {"click.mp4", kClick + kVideo + "-c:a aac", 1},
        {"click.mkv", kClick + kVideo + "-c:a aac", 1},
        // The pictures begin two seconds into the file's own time: still 0 for us.
        {"click_shifted.mkv",
         "-itsoffset 2 " + kClick +
             "-itsoffset 2 -f lavfi -i color=s=32x32:d=2 -map 0 -map 1 -c:v libx264 -c:a flac "
             "-copyts",
         1},
        // The sound begins half a second after the pictures.
        {"click_late.mkv", "-itsoffset 0.5 " + kClick + kVideo + "-c:a flac", 1.5}};
    for (const Case& one : cases) {
        const std::string path = Make(one.name, one.arguments);
        for (int rate : {44100, 48000, 22050}) {
            auto reader = AudioReader::Open(path, rate);
            const double tolerance = rate * 0.0005 + 1;
            EXPECT_NEAR(Peak(*reader, 2), one.seconds * rate, tolerance) << one.name << " " << rate;
        }
    }
}

TEST(AudioReader, ReadingBackwardsGivesWhatReadingForwardsGave) {
    const std::string path =
        Make("back.mp4",
             "-f lavfi -i \"aevalsrc=0.4*sin(2*PI*(300+200*t)*t):s=44100:d=20\" "
             "-c:a aac -b:a 192k");
    auto forwards = AudioReader::Open(path);
    auto jumping = AudioReader::Open(path);
    std::vector<std::vector<int16_t>> straight;
    for (int i = 0; i < 20; ++i) straight.push_back(Read(*forwards, i * 44100, 44100));
    for (int i : {19, 3, 12, 0, 18, 1}) {
        const std::vector<int16_t> got = Read(*jumping, i * 44100, 44100);
        for (size_t k = 0; k < got.size(); ++k) {
            ASSERT_NEAR(got[k], straight[i][k], 40) << "second " << i << " value " << k;
        }
    }
}

TEST(AudioReader, AFileWithoutSoundIsSilent) {
    const std::string path = Make("silent.mp4", clips::Numbered(5) + "-c:v libx264");
    auto reader = AudioReader::Open(path);
    EXPECT_FALSE(reader->Info().present);
    for (int16_t value : Read(*reader, 0, 1000)) ASSERT_EQ(value, 0);
    EXPECT_THAT(clips::ErrorOf([] { AudioReader::Open(OutputPath("no_such.wav")); }),
                testing::HasSubstr("no_such.wav"));
}

}  // namespace
}  // namespace kelmo::host
