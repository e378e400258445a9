// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/media/encode/media_writer.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>

#include "host/media/common/codecs.h"
#include "tests/host/media/clips.h"
#include "tests/support/as_nobody.h"

namespace kelmo::host {
namespace {

using clips::At;
using clips::Color;
using clips::ErrorOf;
using clips::ExpectNear;
using clips::Make;
using clips::OutputPath;
using testing::HasSubstr;

namespace fs = std::filesystem;

WriterOptions Options(int width, int height, bool alpha = false) {
    WriterOptions options;
    options.width = width;
    options.height = height;
    options.keepAlpha = alpha;
    options.threads = 1;
    return options;
}

// Sixteen squares of colour in a row.
Picture PatchPicture(int square) {
    Picture picture;
    picture.Resize(16 * square, square);
    for (int i = 0; i < 16; ++i) {
        clips::Fill(picture, i * square, 0, square, square, clips::Patches()[i]);
    }
    return picture;
}

std::string Write(const std::string& name, const WriterOptions& options, const Picture& picture,
                  int frames, bool anew = true) {
    const std::string path = OutputPath(name);
    if (anew) fs::remove(path);
    auto writer = MediaWriter::Open(path, options);
    for (int i = 0; i < frames; ++i) writer->WriteFrame(picture);
    writer->Finish();
    EXPECT_FALSE(fs::exists(path + ".part"));
    EXPECT_EQ(writer->FramesWritten(), frames);
    return path;
}

TEST(MediaWriter, ColoursComeBackFromEveryKindOfFile) {
    struct Case {
        const char* name;
        int limit;  // what a lossy codec may do to a flat square
    };
    const Case cases[] = {{"patches.mp4", 3},  {"patches.mov", 3},  {"patches.mkv", 3},
                          {"patches.avi", 3},  {"patches.webm", 5}, {"patches.png", 0},
                          {"patches.jpg", 3},  {"patches.webp", 8}, {"patches.bmp", 0},
                          {"patches.tiff", 0}, {"patches.gif", 2}};
    const Picture picture = PatchPicture(32);
    for (const Case& one : cases) {
        const bool still = std::string(one.name).find(".png") != std::string::npos;
        const std::string path =
            Write(one.name, Options(picture.width, picture.height), picture, still ? 1 : 3);
        auto reader = MediaReader::Open(path);
        ASSERT_EQ(reader->Info().width, picture.width) << one.name;
        ASSERT_EQ(reader->Info().height, picture.height) << one.name;
        Picture read;
        ASSERT_TRUE(reader->ReadFrameAt(0, read));
        for (int i = 0; i < 16; ++i) {
            ExpectNear(At(read, 32 * i + 16, 16), clips::Patches()[i], one.limit,
                       std::string(one.name) + " patch " + std::to_string(i));
        }
    }
}

TEST(MediaWriter, VideoIsBt709InSamplesAndInTags) {
    const std::string path = Write("tagged.mp4", Options(512, 32), PatchPicture(32), 2);
    auto reader = MediaReader::Open(path);
    EXPECT_EQ(reader->Info().colorMatrix, "bt709");
    EXPECT_FALSE(reader->Info().fullRange);
    // Another program's view of the samples.
    const std::string raw = Make("tagged.yuv", "-i '" + path + "' -frames:v 1 -f rawvideo");
    const std::vector<uint8_t> samples = clips::Bytes(raw);
    ASSERT_EQ(samples.size(), 512u * 32 * 3 / 2);
    for (int i = 0; i < 16; ++i) {
        const clips::Yuv exact = clips::YuvOf(clips::Patches()[i], 0.2126, 0.0722, false);
        EXPECT_NEAR(samples[512 * 16 + 32 * i + 16], exact.y, 2) << i;
        EXPECT_NEAR(samples[512 * 32 + 256 * 8 + 16 * i + 8], exact.u, 2) << i;
        EXPECT_NEAR(samples[512 * 32 + 256 * 16 + 256 * 8 + 16 * i + 8], exact.v, 2) << i;
    }
}

TEST(MediaWriter, AlphaComesBackFromEveryKindOfFileThatHoldsIt) {
    // Premultiplied: half covered orange, opaque blue, nothing.
    Picture picture;
    picture.Resize(96, 32);
    clips::Fill(picture, 0, 0, 32, 32, {100, 50, 20, 128});
    clips::Fill(picture, 32, 0, 32, 32, {0, 0, 255, 255});
    clips::Fill(picture, 64, 0, 32, 32, {0, 0, 0, 0});
    for (const char* name : {"alpha_out.mov", "alpha_out.webm", "alpha_out.mkv", "alpha_out.png",
                             "alpha_out.webp", "alpha_out.tiff", "alpha_out.avi"}) {
        const std::string path = Write(name, Options(96, 32, true), picture, 1);
        auto reader = MediaReader::Open(path);
        EXPECT_TRUE(reader->Info().hasAlpha) << name;
        Picture read;
        ASSERT_TRUE(reader->ReadFrameAt(0, read));
        ExpectNear(At(read, 16, 16), {100, 50, 20, 128}, 4, name);
        ExpectNear(At(read, 48, 16), {0, 0, 255, 255}, 4, name);
        ExpectNear(At(read, 80, 16), {0, 0, 0, 0}, 2, name);
    }
    // A GIF knows only there and not there.
    auto reader = MediaReader::Open(Write("alpha_out.gif", Options(96, 32, true), picture, 2));
    Picture read;
    ASSERT_TRUE(reader->ReadFrameAt(0, read));
    ExpectNear(At(read, 80, 16), {0, 0, 0, 0}, 0, "gif");
    ExpectNear(At(read, 48, 16), {0, 0, 255, 255}, 2, "gif");
}

TEST(MediaWriter, WithoutAlphaThePictureStandsOnBlack) {
    const Picture picture = clips::Solid(32, 32, {100, 50, 20, 128});
    WriterOptions options = Options(32, 32);
    options.flatten = true;
    for (const char* name :
         {"flat.jpg", "flat.mp4", "flat.webm", "flat.png", "flat.webp", "flat.tiff"}) {
        auto reader = MediaReader::Open(Write(name, options, picture, 1));
        EXPECT_FALSE(reader->Info().hasAlpha) << name;
        Picture read;
        ASSERT_TRUE(reader->ReadFrameAt(0, read));
        ExpectNear(At(read, 16, 16), {100, 50, 20, 255}, 4, name);
    }
    auto writer = MediaWriter::Open(OutputPath("flat_wish.mp4"), Options(32, 32, true));
    ASSERT_EQ(writer->Warnings().size(), 1u);
    EXPECT_THAT(writer->Warnings()[0], HasSubstr("transparency"));
}

TEST(MediaWriter, OddSizesGrowByARepeatedColumnOnlyWhereTheCodecNeedsIt) {
    struct Case {
        const char* name;
        int grown;
    };
    for (const Case& one : {Case{"odd.mp4", 1}, Case{"odd.webm", 0}, Case{"odd.png", 0},
                            Case{"odd.gif", 0}, Case{"odd.jpg", 0}}) {
        for (auto [width, height] : {std::pair{1, 1}, {17, 33}, {639, 5}}) {
            const Picture picture = clips::Solid(width, height, {200, 100, 40, 255});
            auto reader = MediaReader::Open(Write(one.name, Options(width, height), picture, 1));
            Picture read;
            ASSERT_TRUE(reader->ReadFrameAt(0, read));
            EXPECT_EQ(read.width, width + width % 2 * one.grown) << one.name;
            EXPECT_EQ(read.height, height + height % 2 * one.grown) << one.name;
            ExpectNear(At(read, read.width - 1, read.height - 1), {200, 100, 40}, 6, one.name);
        }
    }
}

TEST(MediaWriter, TheChromaOfTheSourceIsKeptWhereTheEncoderCan) {
    struct Case {
        const char* name;
        const char* codec;
        const char* source;
        const char* wanted;
        const char* written;
    };
    const Case cases[] = {{"a.mp4", "", "yuv444p", "", "yuv444p"},
                          {"b.mp4", "", "yuv422p10le", "", "yuv422p"},
                          {"c.mp4", "", "yuv420p", "", "yuv420p"},
                          {"d.mp4", "", "gbrp", "", "yuv420p"},
                          {"e.mkv", "ffv1", "gbrp", "", "bgr0"},
                          {"f.mkv", "libx264rgb", "yuv420p", "", "gbrp"},
                          {"g.mov", "prores_ks", "yuv444p", "", "yuv444p12le"},
                          {"h.mp4", "", "yuv444p", "yuv420p", "yuv420p"},
                          {"i.mkv", "ffv1", "", "gbrp10le", "gbrp10le"}};
    for (const Case& one : cases) {
        WriterOptions options = Options(32, 32);
        options.videoCodec = one.codec;
        options.sourceFormat = one.source;
        options.pixelFormat = one.wanted;
        const std::string path = Write(std::string("chroma_") + one.name, options,
                                       clips::Solid(32, 32, {200, 90, 40}), 2);
        auto reader = MediaReader::Open(path);
        EXPECT_EQ(reader->Info().pixelFormat, one.written) << one.name;
        Picture picture;
        reader->ReadFrameAt(0, picture);
        ExpectNear(At(picture, 16, 16), {200, 90, 40}, 4, one.name);
    }
    WriterOptions options = Options(32, 32);
    options.pixelFormat = "yuv411p";
    EXPECT_THAT(ErrorOf([&] { MediaWriter::Open(OutputPath("no.mp4"), options); }),
                HasSubstr("it takes yuv420p"));
}

TEST(MediaWriter, EveryFrameArrivesAtItsTime) {
    for (const char* name :
         {"times.mp4", "times.webm", "times.mkv", "times%02d.png", "times.gif"}) {
        WriterOptions options = Options(64, 48);
        options.frameRate = {20, 1};
        const std::string path = OutputPath(name);
        auto writer = MediaWriter::Open(path, options);
        for (int i = 0; i < 25; ++i) {
            writer->WriteFrame(clips::Solid(64, 48, {i * 10, i * 10, i * 10}));
        }
        writer->Finish();
        auto reader = MediaReader::Open(path, {.sequenceRate = {20, 1}});
        EXPECT_NEAR(reader->Info().duration, 1.25, 0.01) << name;
        EXPECT_EQ(reader->Info().frameCount, 25) << name;
        Picture read;
        for (int i = 0; i < 25; ++i) {
            ASSERT_TRUE(reader->ReadFrameAt(i / 20.0, read));
            EXPECT_NEAR(At(read, 30, 20).green, i * 10, 4) << name << " frame " << i;
        }
    }
}

// A short swing whose top lies at one second; pictures beside it.
std::string ClickClip(const std::string& name, const std::string& codec) {
    return Make(
        name,
        "-f lavfi -i \"aevalsrc='0.9*cos(2*PI*2000*(t-1))*exp(-pow((t-1)*2000,2))':"
        "s=44100:d=2\" -f lavfi -i color=s=32x32:d=2:r=25 -map 0 -map 1 -c:v libx264 -c:a " +
            codec);
}

double PeakTime(const std::string& path) {
    auto reader = AudioReader::Open(path);
    std::vector<int16_t> samples(2 * 3 * 44100);
    reader->Read(0, 3 * 44100, samples.data());
    size_t best = 0;
    for (size_t i = 0; i < samples.size(); i += 2) {
        if (std::abs(samples[i]) > std::abs(samples[best])) best = i;
    }
    return static_cast<double>(best / 2) / 44100;
}

TEST(MediaWriter, TheSoundOfTheSourceStaysInTime) {
    const std::string source = ClickClip("click_source.mp4", "aac");
    struct Case {
        const char* name;
        double start;
        const char* codec;  // what the writer says
    };
    for (const Case& one :
         {Case{"sound0.mp4", 0, "copy (aac)"}, Case{"sound1.mp4", 0.5, "copy (aac)"},
          Case{"sound2.mp4", 0.123, "copy (aac)"}, Case{"sound3.mkv", 0.5, "copy (aac)"},
          Case{"sound4.mov", 0.321, "copy (aac)"}, Case{"sound5.webm", 0.5, "libopus"},
          Case{"sound6.avi", 0.5, "libmp3lame"}}) {
        WriterOptions options = Options(32, 32);
        options.audio = AudioMode::kCopy;
        options.audioSource = source;
        options.audioStart = one.start;
        const std::string path = OutputPath(one.name);
        auto writer = MediaWriter::Open(path, options);
        EXPECT_EQ(writer->AudioCodec(), one.codec);
        for (int i = 0; i < 30; ++i) writer->WriteFrame(clips::Solid(32, 32, {90, 90, 90}));
        writer->Finish();
        // AVI knows no delay of a codec: a frame of MP3 is 26 ms.
        const double limit = path.ends_with(".avi") ? 0.03 : 0.002;
        EXPECT_NEAR(PeakTime(path), 1 - one.start, limit) << one.name;
        auto reader = AudioReader::Open(path);
        EXPECT_NEAR(reader->Info().duration, 1.2, path.ends_with(".avi") ? 0.15 : 0.06)
            << one.name << ": as long as the pictures";
    }
}

TEST(MediaWriter, CopiedPacketsAreTheSameBytes) {
    const std::string source = ClickClip("bytes_source.mp4", "aac");
    WriterOptions options = Options(32, 32);
    options.audio = AudioMode::kCopy;
    options.audioSource = source;
    const std::string path = OutputPath("bytes.mp4");
    auto writer = MediaWriter::Open(path, options);
    for (int i = 0; i < 50; ++i) writer->WriteFrame(clips::Solid(32, 32, {90, 90, 90}));
    writer->Finish();
    const auto packets = [](const std::string& file, const std::string& name) {
        return clips::Bytes(Make(name, "-i '" + file + "' -map 0:a -c copy -f adts"));
    };
    EXPECT_EQ(packets(path, "copied.aac"), packets(source, "original.aac"));
}

TEST(MediaWriter, EncodesSamplesThatItIsGiven) {
    for (const char* name : {"given.mp4", "given.mkv", "given.webm", "given.mov"}) {
        WriterOptions options = Options(32, 32);
        options.audio = AudioMode::kEncode;
        const std::string path = OutputPath(name);
        auto writer = MediaWriter::Open(path, options);
        for (int frame = 0; frame < 50; ++frame) {
            writer->WriteFrame(clips::Solid(32, 32, {90, 90, 90}));
            const int64_t first = options.frameRate.FirstSampleOf(frame, 44100);
            const int64_t end = options.frameRate.FirstSampleOf(frame + 1, 44100);
            std::vector<int16_t> samples;
            for (int64_t i = first; i < end; ++i) {
                const double t = static_cast<double>(i) / 44100 - 1;
                const double value =
                    0.9 * std::cos(2 * M_PI * 2000 * t) * std::exp(-std::pow(t * 2000, 2)) * 32767;
                samples.insert(samples.end(), 2, static_cast<int16_t>(value));
            }
            writer->WriteAudio(samples.data(), static_cast<int>(samples.size() / 2));
        }
        writer->Finish();
        EXPECT_NEAR(PeakTime(path), 1, 0.002) << name;
    }
}

TEST(MediaWriter, SaysWhatItLeavesOut) {
    const std::string source = ClickClip("left_out.mp4", "aac");
    for (const char* name : {"silent.gif", "silent.png"}) {
        WriterOptions options = Options(32, 32);
        options.audio = AudioMode::kCopy;
        options.audioSource = source;
        auto writer = MediaWriter::Open(OutputPath(name), options);
        ASSERT_EQ(writer->Warnings().size(), 1u) << name;
        EXPECT_THAT(writer->Warnings()[0], HasSubstr("sound"));
    }
    WriterOptions flac = Options(32, 32);
    flac.audio = AudioMode::kCopy;
    flac.audioSource = ClickClip("lossless.mkv", "flac");
    auto anew = MediaWriter::Open(OutputPath("anew.mp4"), flac);
    anew->WriteFrame(clips::Solid(32, 32, {90, 90, 90}));
    anew->Finish();
    EXPECT_EQ(anew->AudioCodec(), "aac");
    ASSERT_EQ(anew->Warnings().size(), 1u);
    EXPECT_THAT(anew->Warnings()[0], HasSubstr("flac"));
    auto writer = MediaWriter::Open(OutputPath("single.png"), Options(8, 8));
    for (int i = 0; i < 2; ++i) writer->WriteFrame(clips::Solid(8, 8, {i * 200, 0, 0}));
    writer->Finish();
    ASSERT_EQ(writer->Warnings().size(), 1u);
    EXPECT_THAT(writer->Warnings()[0], HasSubstr("first frame"));
    Picture read;
    MediaReader::Open(OutputPath("single.png"))->ReadFrameAt(0, read);
    ExpectNear(At(read, 4, 4), {0, 0, 0}, 0, "the first frame was kept");
}

TEST(MediaWriter, RefusesWhatCannotWorkWithAReasonAndAHint) {
    const std::string folder = OutputPath("a_folder.mp4");
    fs::create_directories(folder);
    struct Case {
        std::string path;
        WriterOptions options;
        const char* reason;
    };
    WriterOptions noRate = Options(8, 8);
    noRate.frameRate = {0, 1};
    WriterOptions badCodec = Options(8, 8);
    badCodec.videoCodec = "no_such_codec";
    WriterOptions wrongCodec = Options(8, 8);
    wrongCodec.videoCodec = "libvpx-vp9";
    WriterOptions badContainer = Options(8, 8);
    badContainer.container = "no_such_container";
    const Case cases[] = {
        {OutputPath("missing_folder/x.mp4"), Options(8, 8), "missing_folder' does not exist"},
        {OutputPath("missing_folder/x.png"), Options(8, 8), "missing_folder' does not exist"},
        {folder, Options(8, 8), "it is a folder"},
        {OutputPath("no_ending"), Options(8, 8), "no ending"},
        {OutputPath("x.unknown"), Options(8, 8), "'.unknown' is not known"},
        {OutputPath("x.mp3"), Options(8, 8), "holds no pictures"},
        {OutputPath("x.mp4"), Options(0, 8), "size of 0x8"},
        {OutputPath("x.mp4"), Options(100000, 8), "size of 100000x8"},
        {OutputPath("x.mp4"), Options(30000, 3000), "at most 16384 pixels a side"},
        {OutputPath("x.mp4"), noRate, "rate of 0/1"},
        {OutputPath("x.mp4"), badCodec, "no_such_codec"},
        {OutputPath("x.avi.gif"), wrongCodec, "'gif' refuses"},
        {OutputPath("x.mp4"), badContainer, "no_such_container"},
    };
    for (const Case& one : cases) {
        const std::string message = ErrorOf([&] { MediaWriter::Open(one.path, one.options); });
        EXPECT_THAT(message, testing::AllOf(HasSubstr("cannot write '" + one.path + "'"),
                                            HasSubstr(one.reason)));
        EXPECT_FALSE(fs::exists(one.path + ".part")) << one.path;
    }
    auto writer = MediaWriter::Open(OutputPath("sizes.mp4"), Options(8, 8));
    EXPECT_THAT(ErrorOf([&] { writer->WriteFrame(clips::Solid(9, 8, {})); }), HasSubstr("9x8"));
}

TEST(MediaWriter, AFolderWithoutPermissionIsNamed) {
    const std::string folder = OutputPath("locked");
    fs::create_directories(folder);
    fs::permissions(folder, fs::perms::owner_read | fs::perms::owner_exec | fs::perms::others_read |
                                fs::perms::others_exec);
    {
        const test::AsNobody nobody;
        if (access(folder.c_str(), X_OK) != 0) {
            GTEST_SKIP() << "nobody cannot even reach the test output";
        }
        for (const char* name : {"/x.mp4", "/x.png"}) {
            EXPECT_THAT(ErrorOf([&] { MediaWriter::Open(folder + name, Options(8, 8)); }),
                        HasSubstr("no permission"));
        }
    }
    fs::permissions(folder, fs::perms::owner_all);
}

TEST(MediaWriter, AFullDiskIsAnErrorAndLeavesNothing) {
    const std::string path = OutputPath("full.mkv");
    fs::remove(path);
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    const rlimit small{100000, before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
    WriterOptions options = Options(320, 240);
    options.videoCodec = "ffv1";
    std::string message;
    try {
        auto writer = MediaWriter::Open(path, options);
        Picture noise;
        noise.Resize(320, 240);
        unsigned state = 1;
        for (int frame = 0; frame < 20; ++frame) {
            for (uint8_t& value : noise.pixels) {
                state = state * 1664525u + 1013904223u;
                value = static_cast<uint8_t>(state >> 24);
            }
            writer->WriteFrame(noise);
        }
        writer->Finish();
    } catch (const MediaError& error) {
        message = error.what();
    }
    setrlimit(RLIMIT_FSIZE, &before);
    EXPECT_THAT(message, HasSubstr("full.mkv"));
    EXPECT_FALSE(fs::exists(path));
    EXPECT_FALSE(fs::exists(path + ".part"));
}

TEST(MediaWriter, AnOlderFileStaysUntilTheNewOneIsComplete) {
    const std::string path = OutputPath("older.mp4");
    clips::WriteBytes(path, {'o', 'l', 'd'});
    {
        auto writer = MediaWriter::Open(path, Options(32, 32));
        writer->WriteFrame(clips::Solid(32, 32, {1, 2, 3}));
        EXPECT_TRUE(fs::exists(path + ".part"));
    }
    EXPECT_EQ(clips::Bytes(path).size(), 3u) << "destroyed without Finish";
    EXPECT_FALSE(fs::exists(path + ".part"));

    auto aborted = MediaWriter::Open(path, Options(32, 32));
    aborted->WriteFrame(clips::Solid(32, 32, {1, 2, 3}));
    aborted->Abort();
    EXPECT_EQ(clips::Bytes(path).size(), 3u);
    EXPECT_THAT(ErrorOf([&] { aborted->WriteFrame(clips::Solid(32, 32, {})); }),
                HasSubstr("closed"));

    auto none = MediaWriter::Open(path, Options(32, 32));
    EXPECT_THAT(ErrorOf([&] { none->Finish(); }), HasSubstr("no frame"));
    EXPECT_EQ(clips::Bytes(path).size(), 3u);

    auto finished = MediaWriter::Open(path, Options(32, 32));
    finished->WriteFrame(clips::Solid(32, 32, {1, 2, 3}));
    finished->Finish();
    EXPECT_GT(clips::Bytes(path).size(), 300u);
}

TEST(MediaWriter, NumberedPicturesReplaceOlderFilesAtTheEnd) {
    const std::string pattern = OutputPath("older%02d.png");
    const std::string older = OutputPath("older01.png");
    const std::string fresh = OutputPath("older02.png");
    for (const bool finish : {false, true}) {
        SCOPED_TRACE(finish);
        clips::WriteBytes(older, {'o', 'l', 'd'});
        fs::remove(fresh);
        auto writer = MediaWriter::Open(pattern, Options(8, 8));
        for (int i = 0; i < 2; ++i) writer->WriteFrame(clips::Solid(8, 8, {1, 2, 3}));
        EXPECT_EQ(clips::Bytes(older).size(), 3u);
        EXPECT_TRUE(fs::exists(fresh));
        finish ? writer->Finish() : writer->Abort();
        EXPECT_EQ(clips::Bytes(older).size() == 3, !finish);
        EXPECT_EQ(fs::exists(fresh), finish);
        EXPECT_FALSE(fs::exists(older + ".part"));
    }
}

TEST(MediaWriter, ANamedPipeIsWrittenItself) {
    for (const char* name : {"pipe.mp4", "pipe.png"}) {
        const std::string path = OutputPath(name);
        fs::remove(path);
        ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
        const int reading = open(path.c_str(), O_RDONLY | O_NONBLOCK);
        Write(name, Options(32, 32), clips::Solid(32, 32, {200, 100, 40}), 1, false);
        EXPECT_TRUE(fs::is_fifo(path)) << name;
        std::vector<uint8_t> bytes(65536);
        bytes.resize(static_cast<size_t>(std::max<ssize_t>(read(reading, bytes.data(), 65536), 0)));
        close(reading);
        fs::remove(path);
        clips::WriteBytes(path, bytes);
        Picture picture;
        MediaReader::Open(path)->ReadFrameAt(0, picture);
        ExpectNear(At(picture, 16, 16), {200, 100, 40}, 4, name);
    }
}

TEST(MediaWriter, ReproducibleFilesAreEqualByteForByte) {
    for (const char* ending : {".mp4", ".mkv", ".webm"}) {
        std::vector<uint8_t> bytes[2];
        for (int run = 0; run < 2; ++run) {
            WriterOptions options = Options(64, 48);
            options.reproducible = true;
            const std::string path = OutputPath(std::string("same") + ending);
            auto writer = MediaWriter::Open(path, options);
            for (int i = 0; i < 5; ++i) writer->WriteFrame(clips::Solid(64, 48, {i * 40, 9, 9}));
            writer->Finish();
            bytes[run] = clips::Bytes(path);
        }
        EXPECT_EQ(bytes[0], bytes[1]) << ending;
    }
}

TEST(Codecs, WhatTheDefaultsNeedIsListedAndPresent) {
    int encoders = 0;
    for (const CodecEntry& entry : Codecs()) {
        EXPECT_FALSE(entry.purpose.empty()) << entry.name;
        encoders += entry.encoder;
        if (entry.name == "libx264" || entry.name == "png") {
            EXPECT_TRUE(entry.available) << entry.name;
        }
    }
    EXPECT_GE(encoders, 10);
    EXPECT_THAT(MediaLibraries(), HasSubstr("libavcodec "));
}

}  // namespace
}  // namespace kelmo::host
