// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/media/decode/media_reader.h"

#include <random>

#include "tests/host/media/clips.h"

namespace kelmo::host {
namespace {

using clips::At;
using clips::Color;
using clips::ExpectNear;
using clips::FrameNumber;
using clips::Make;
using clips::Numbered;
using clips::OutputPath;

Picture ReadAt(const std::string& path, double seconds, const ReaderOptions& options = {}) {
    Picture picture;
    EXPECT_TRUE(MediaReader::Open(path, options)->ReadFrameAt(seconds, picture));
    return picture;
}

TEST(MediaReader, DescribesAClip) {
    const std::string path =
        Make("describe.mp4", "-f lavfi -i sine=r=48000:d=1 " + Numbered(30, 30) +
                                 "-map 0 -map 1 -c:v libx264 -c:a aac");
    auto reader = MediaReader::Open(path);
    const MediaInfo& info = reader->Info();
    EXPECT_EQ(info.width, 64);
    EXPECT_EQ(info.height, 48);
    EXPECT_EQ(info.frameRate.numerator, 30);
    EXPECT_EQ(info.frameRate.denominator, 1);
    EXPECT_NEAR(info.duration, 1, 1e-6);
    EXPECT_EQ(info.frameCount, 30);
    EXPECT_FALSE(info.still);
    EXPECT_FALSE(info.hasAlpha);
    EXPECT_TRUE(info.hasAudio);
    EXPECT_EQ(info.audioRate, 48000);
    EXPECT_EQ(info.audioChannels, 1);
    EXPECT_EQ(info.videoCodec, "h264");
    EXPECT_EQ(info.audioCodec, "aac");
    EXPECT_TRUE(reader->Warnings().empty());
}

struct Codec {
    const char* name;
    const char* arguments;
};

class EveryCodec : public testing::TestWithParam<Codec> {};

TEST_P(EveryCodec, GivesTheFrameOfATimeForwardsBackwardsAndAtRandom) {
    constexpr int kFrames = 50;
    const std::string path = Make(GetParam().name, Numbered(kFrames) + GetParam().arguments);
    auto reader = MediaReader::Open(path);
    Picture picture;
    const auto expectFrame = [&](int frame, const char* how) {
        ASSERT_TRUE(reader->ReadFrameAt(frame / 25.0, picture));
        ASSERT_EQ(FrameNumber(picture), frame) << how;
    };
    for (int frame = 0; frame < kFrames; ++frame) expectFrame(frame, "forwards");
    for (int frame = kFrames - 1; frame >= 0; frame -= 7) expectFrame(frame, "backwards");
    std::mt19937 random(3);
    for (int i = 0; i < 25; ++i) expectFrame(static_cast<int>(random() % kFrames), "at random");
    // In the middle of a frame, before the first and after the last.
    ASSERT_TRUE(reader->ReadFrameAt(10.6 / 25, picture));
    EXPECT_EQ(FrameNumber(picture), 10);
    EXPECT_FALSE(reader->Ended());
    ASSERT_TRUE(reader->ReadFrameAt(-1, picture));
    EXPECT_EQ(FrameNumber(picture), 0);
    ASSERT_TRUE(reader->ReadFrameAt(100, picture));
    EXPECT_EQ(FrameNumber(picture), kFrames - 1);
    EXPECT_TRUE(reader->Ended());
    EXPECT_THAT(reader->Warnings(), testing::IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    MediaReader, EveryCodec,
    testing::Values(
        Codec{"h264_b_frames.mp4", "-c:v libx264 -g 12 -bf 3 -crf 8"},
        Codec{"h264_open_gop.mkv", "-c:v libx264 -g 10 -bf 3 -crf 8 -x264opts open-gop=1"},
        Codec{"h264_late.ts", "-c:v libx264 -g 12 -bf 2 -crf 8 -output_ts_offset 7"},
        Codec{"mpeg4.avi", "-c:v mpeg4 -q:v 2 -g 12 -bf 2"},
        Codec{"mpeg2.mpg", "-c:v mpeg2video -q:v 2 -g 12 -bf 2"},
        Codec{"vp9.webm", "-c:v libvpx-vp9 -b:v 0 -crf 5 -g 12 -cpu-used 8 -deadline realtime"},
        Codec{"mjpeg.mov", "-c:v mjpeg -q:v 2"}, Codec{"ffv1.nut", "-c:v ffv1"},
        Codec{"one_key.mp4", "-c:v libx264 -g 1000 -crf 8"}, Codec{"raw.y4m", ""}),
    [](const auto& info) {
        std::string name = info.param.name;
        std::replace(name.begin(), name.end(), '.', '_');
        return name;
    });

TEST(MediaReader, UnevenTimeStampsShowTheFrameThatAPlayerShows) {
    // 0..9 one by one, then every fifth frame, each shown for five.
    const std::string path = Make("vfr.mkv", Numbered(50) +
                                                 "-vf \"select='lt(n,10)+not(mod(n,5))'\" "
                                                 "-vsync vfr -c:v libx264 -crf 8");
    auto reader = MediaReader::Open(path);
    EXPECT_EQ(reader->Info().frameRate.PerSecond(), 25) << "the base rate, not the mean";
    Picture picture;
    for (int frame = 0; frame < 46; ++frame) {
        ASSERT_TRUE(reader->ReadFrameAt(frame / 25.0, picture));
        EXPECT_EQ(FrameNumber(picture), frame < 10 ? frame : frame - frame % 5) << frame;
        if (frame > 10) {
            EXPECT_EQ(reader->LastFrameRepeated(), frame % 5 != 0) << frame;
        }
    }
}

TEST(MediaReader, MillisecondTimeStampsLoseNoFrameAtFractionalRates) {
    const std::string path =
        Make("ntsc.mkv",
             "-f lavfi -i \"nullsrc=s=64x48:r=30000/1001,format=yuv420p,"
             "geq=lum=16+4*N:cb=128:cr=128\" -frames:v 50 -c:v libx264 -crf 8");
    auto reader = MediaReader::Open(path);
    EXPECT_EQ(reader->Info().frameRate.numerator, 30000);
    EXPECT_EQ(reader->Info().frameRate.denominator, 1001);
    Picture picture;
    for (int frame = 0; frame < 50; ++frame) {
        ASSERT_TRUE(reader->ReadFrameAt(reader->Info().frameRate.TimeOf(frame), picture));
        EXPECT_EQ(FrameNumber(picture), frame);
    }
}

// Quarters: red, green / blue, white.
const char kQuarters[] =
    "-f lavfi -i \"color=red:s=32x24[a];color=lime:s=32x24[b];color=blue:s=32x24[c];"
    "color=white:s=32x24[d];[a][b]hstack[t];[c][d]hstack[u];[t][u]vstack,format=rgb24\" ";

void ExpectQuarters(const Picture& picture, const std::vector<Color>& expected,
                    const std::string& what) {
    const int left = picture.width / 4, right = 3 * picture.width / 4;
    const int top = picture.height / 4, bottom = 3 * picture.height / 4;
    ExpectNear(At(picture, left, top), expected[0], 6, what + " top left");
    ExpectNear(At(picture, right, top), expected[1], 6, what + " top right");
    ExpectNear(At(picture, left, bottom), expected[2], 6, what + " bottom left");
    ExpectNear(At(picture, right, bottom), expected[3], 6, what + " bottom right");
}

const Color kRed{255, 0, 0}, kGreen{0, 255, 0}, kBlue{0, 0, 255}, kWhite{255, 255, 255};

TEST(MediaReader, TurnsWhatTheFileSaysIsLyingOnItsSide) {
    const std::string upright = Make(
        "upright.mp4", std::string(kQuarters) + "-frames:v 3 -c:v libx264 -crf 4 -pix_fmt yuv444p");
    struct Case {
        int degrees;
        std::vector<Color> corners;
    };
    const Case cases[] = {{0, {kRed, kGreen, kBlue, kWhite}},
                          {90, {kBlue, kRed, kWhite, kGreen}},
                          {180, {kWhite, kBlue, kGreen, kRed}},
                          {270, {kGreen, kWhite, kRed, kBlue}}};
    for (const Case& one : cases) {
        const std::string degrees = std::to_string(one.degrees);
        // The program counts the other way round.
        const std::string tag = std::to_string((360 - one.degrees) % 360);
        const std::string path = Make("turned" + degrees + ".mp4",
                                      "-i '" + upright + "' -c copy -metadata:s:v rotate=" + tag);
        auto reader = MediaReader::Open(path);
        EXPECT_EQ(reader->Info().rotation, one.degrees);
        const bool lying = one.degrees % 180 != 0;
        EXPECT_EQ(reader->Info().width, lying ? 48 : 64);
        EXPECT_EQ(reader->Info().height, lying ? 64 : 48);
        Picture picture;
        ASSERT_TRUE(reader->ReadFrameAt(0, picture));
        ExpectQuarters(picture, one.corners, degrees);
        // Scaled to an odd size as well.
        reader->SetOutput(33, 41, FitMode::kStretch);
        ASSERT_TRUE(reader->ReadFrameAt(0, picture));
        EXPECT_EQ(picture.width, 33);
        ExpectQuarters(picture, one.corners, degrees + " scaled");
    }
}

TEST(MediaReader, TurnsPhotosByTheirExifEntry) {
    const std::string plain = Make("plain.jpg", std::string(kQuarters) + "-frames:v 1 -q:v 2");
    const std::vector<std::vector<Color>> corners = {
        {kRed, kGreen, kBlue, kWhite}, {kGreen, kRed, kWhite, kBlue}, {kWhite, kBlue, kGreen, kRed},
        {kBlue, kWhite, kRed, kGreen}, {kRed, kBlue, kGreen, kWhite}, {kBlue, kRed, kWhite, kGreen},
        {kWhite, kGreen, kBlue, kRed}, {kGreen, kWhite, kRed, kBlue}};
    for (uint8_t orientation = 1; orientation <= 8; ++orientation) {
        std::vector<uint8_t> bytes = clips::Bytes(plain);
        const std::vector<uint8_t> exif = {
            0xff, 0xe1, 0,    34,   'E', 'x', 'i', 'f', 0, 0, 'M', 'M',         0, 42, 0, 0, 0, 8,
            0,    1,    0x01, 0x12, 0,   3,   0,   0,   0, 1, 0,   orientation, 0, 0,  0, 0, 0, 0};
        bytes.insert(bytes.begin() + 2, exif.begin(), exif.end());
        const std::string path = OutputPath("exif" + std::to_string(orientation) + ".jpg");
        clips::WriteBytes(path, bytes);
        ExpectQuarters(ReadAt(path, 0), corners[orientation - 1],
                       "orientation " + std::to_string(orientation));
    }
}

TEST(MediaReader, LightThatIsNotBt709IsBroughtThere) {
    struct Case {
        const char* transfer;
        int y, u, v;  // 10 bits, limited range
        Color expected;
    };
    // 203 cd/m2 is the reference white: 1 of light, 0.853 behind the tone curve.
    const Case cases[] = {{"smpte2084", 573, 512, 512, {239, 239, 239}},
                          {"arib-std-b67", 721, 512, 512, {239, 239, 239}},
                          {"smpte2084", 64, 512, 512, {0, 0, 0}},
                          {"bt2020-10", 502, 512, 512, {128, 128, 128}},
                          // Red of BT.709 as BT.2020 has it.
                          {"bt2020-10", 458, 384, 739, {255, 0, 0}}};
    for (const Case& one : cases) {
        const std::string samples = "lum=" + std::to_string(one.y) +
                                    ":cb=" + std::to_string(one.u) + ":cr=" + std::to_string(one.v);
        auto reader = MediaReader::Open(Make(
            "light.mkv", "-f lavfi -i \"nullsrc=s=64x48:d=0.2,format=yuv420p10,geq=" + samples +
                             "\" -c:v ffv1 -colorspace bt2020nc -color_primaries bt2020 "
                             "-color_trc " +
                             one.transfer));
        Picture picture;
        ASSERT_TRUE(reader->ReadFrameAt(0, picture));
        ExpectNear(At(picture, 32, 24), one.expected, 6, one.transfer + samples);
        EXPECT_EQ(reader->Info().notes.size(), 2u) << "light and depth";
    }
}

TEST(MediaReader, InterlacedClipsLoseTheirCombs) {
    // A bar that moves eight pixels a field.
    const std::string path = Make(
        "fields.mkv",
        "-f lavfi -i \"nullsrc=s=128x64:r=50:d=1,format=yuv420p,geq=lum='if(lt(mod(X-8*N,64),16),"
        "235,16)':cb=128:cr=128,tinterlace=interleave_top,setfield=tff\" -c:v mpeg2video -q:v 2 "
        "-top 1 -flags +ildct+ilme");
    int combs[2] = {};
    for (const bool deinterlace : {false, true}) {
        ReaderOptions options;
        options.deinterlace = deinterlace;
        auto reader = MediaReader::Open(path, options);
        EXPECT_EQ(reader->Info().frameRate.PerSecond(), 25);
        EXPECT_EQ(reader->Info().notes.size(), deinterlace ? 1u : 0u);
        Picture picture;
        for (const int frame : {3, 20, 24, 10}) {
            ASSERT_TRUE(reader->ReadFrameAt(frame / 25.0, picture));
            // The first field is that of frame * 2 of the source.
            EXPECT_GT(At(picture, (16 * frame + 4) % 64, 32).green, 200) << frame;
            for (int y = 1; y < 63; ++y) {
                for (int x = 0; x < 128; ++x) {
                    const int above = At(picture, x, y - 1).green,
                              below = At(picture, x, y + 1).green;
                    const int here = At(picture, x, y).green;
                    combs[deinterlace] += (above - here) * (below - here) > 4000;
                }
            }
        }
    }
    EXPECT_GT(combs[0], 2000);
    EXPECT_LT(combs[1], combs[0] / 20);
}

TEST(MediaReader, WidePixelsBecomeSquare) {
    const std::string path =
        Make("sar.mp4",
             std::string(kQuarters) + "-frames:v 2 -vf setsar=2/1 -c:v libx264 -pix_fmt yuv420p");
    auto reader = MediaReader::Open(path);
    EXPECT_EQ(reader->Info().width, 128);
    EXPECT_EQ(reader->Info().height, 48);
    Picture picture;
    ASSERT_TRUE(reader->ReadFrameAt(0, picture));
    EXPECT_EQ(picture.width, 128);
}

TEST(MediaReader, FitsAChosenSize) {
    const std::string path = Make("fit.mkv", std::string(kQuarters) + "-frames:v 2 -c:v ffv1");
    auto reader = MediaReader::Open(path, {.width = 128, .height = 0});
    EXPECT_EQ(reader->OutputHeight(), 96);

    reader->SetOutput(101, 48, FitMode::kLetterbox);
    Picture picture = clips::Solid(101, 48, {9, 9, 9, 9});
    ASSERT_TRUE(reader->ReadFrameAt(0, picture));
    ExpectNear(At(picture, 0, 20), {0, 0, 0, 0}, 0, "left of the picture");
    ExpectNear(At(picture, 17, 47), {0, 0, 0, 0}, 0, "left edge");
    ExpectNear(At(picture, 19, 1), kRed, 3, "first column");
    ExpectNear(At(picture, 81, 46), kWhite, 3, "last column");
    ExpectNear(At(picture, 82, 47), {0, 0, 0, 0}, 0, "right edge");

    reader->SetOutput(101, 48, FitMode::kStretch);
    ASSERT_TRUE(reader->ReadFrameAt(0, picture));
    ExpectNear(At(picture, 0, 0), kRed, 3, "stretched first");
    ExpectNear(At(picture, 100, 47), kWhite, 3, "stretched last");

    reader->SetOutput(48, 101, FitMode::kLetterbox);
    ASSERT_TRUE(reader->ReadFrameAt(0, picture));
    ExpectNear(At(picture, 10, 31), {0, 0, 0, 0}, 0, "above");
    ExpectNear(At(picture, 10, 34), kRed, 3, "top");
}

TEST(MediaReader, AlphaArrivesPremultipliedFromEveryFormatThatHasIt) {
    // The left half (200, 100, 40) at alpha 128, the right half opaque.
    const std::string source =
        "-f lavfi -i \"color=0xc86428:s=32x16,format=rgba,"
        "geq=r='r(X,Y)':g='g(X,Y)':b='b(X,Y)':a='if(lt(X,16),128,255)'\" -frames:v 2 ";
    const Codec cases[] = {
        {"alpha.png", "-frames:v 1 -pix_fmt rgba"},
        {"alpha16.png", "-frames:v 1 -pix_fmt rgba64be"},
        {"alpha_qtrle.mov", "-c:v qtrle"},
        {"alpha_prores.mov", "-c:v prores_ks -profile:v 4444 -pix_fmt yuva444p10le -q:v 2"},
        {"alpha_vp9.webm", "-c:v libvpx-vp9 -pix_fmt yuva420p -b:v 0 -crf 4 -auto-alt-ref 0"},
        {"alpha.webp", "-frames:v 1 -c:v libwebp -lossless 1"},
        {"alpha_ffv1.mkv", "-c:v ffv1 -pix_fmt yuva444p"}};
    for (const Codec& one : cases) {
        const std::string path = Make(one.name, source + one.arguments);
        auto reader = MediaReader::Open(path);
        EXPECT_TRUE(reader->Info().hasAlpha) << one.name;
        Picture picture;
        ASSERT_TRUE(reader->ReadFrameAt(0, picture));
        ExpectNear(At(picture, 5, 8), {100, 50, 20, 128}, 4, one.name);
        ExpectNear(At(picture, 26, 8), {200, 100, 40, 255}, 4, one.name);
        reader->SetOutput(64, 32, FitMode::kStretch);
        ASSERT_TRUE(reader->ReadFrameAt(0, picture));
        ExpectNear(At(picture, 10, 16), {100, 50, 20, 128}, 4, std::string(one.name) + " scaled");
        for (int x = 0; x < 64; ++x) {
            const Color color = At(picture, x, 16);
            EXPECT_LE(color.red, color.alpha) << one.name << " column " << x;
        }
    }
}

TEST(MediaReader, HiddenColoursOfTransparentPlacesDoNotBleed) {
    // Opaque black beside transparent white: premultiplied, white must never appear.
    const std::string path =
        Make("bleed.png",
             "-f lavfi -i \"color=black:s=64x64,format=rgba,geq=r='if(lt(X,32),0,255)':"
             "g='if(lt(X,32),0,255)':b='if(lt(X,32),0,255)':a='if(lt(X,32),255,0)'\" -frames:v 1");
    for (int size : {16, 23, 100}) {
        const Picture picture = ReadAt(path, 0, {.width = size, .height = size});
        for (int x = 0; x < size; ++x) {
            EXPECT_LE(At(picture, x, size / 2).red, 1) << size << " column " << x;
        }
    }
}

struct ColourCase {
    const char* name;
    double red, blue;  // weights
    bool fullRange;
    const char* tags;  // arguments that tag the file
    const char* matrix;
    int size;  // of the picture: untagged ones are judged by it
};

class Colours : public testing::TestWithParam<ColourCase> {};

TEST_P(Colours, PatchesAreWithinThreeLevels) {
    const ColourCase& one = GetParam();
    for (const std::string format : {"yuv444p", "yuv420p", "nv12", "yuv420p10le"}) {
        // Sixteen squares in a row, exact samples computed here.
        const int square = one.size / 16, width = one.size, height = one.size;
        const bool deep = format == "yuv420p10le";
        const bool half = format != "yuv444p";
        std::vector<uint8_t> raw;
        const auto put = [&](double value) {
            const long level = std::lround(deep ? value * 4 : value);
            raw.push_back(static_cast<uint8_t>(std::min(level, deep ? 1023L : 255L)));
            if (deep) {
                raw.back() = static_cast<uint8_t>(std::min(level, 1023L) & 255);
                raw.push_back(static_cast<uint8_t>(std::min(level, 1023L) >> 8));
            }
        };
        const auto sample = [&](int x) {
            return clips::YuvOf(clips::Patches()[x / square], one.red, one.blue, one.fullRange);
        };
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) put(sample(x).y);
        }
        const int step = half ? 2 : 1;
        if (format == "nv12") {
            for (int y = 0; y < height; y += 2) {
                for (int x = 0; x < width; x += 2) {
                    put(sample(x).u);
                    put(sample(x).v);
                }
            }
        } else {
            for (int y = 0; y < height; y += step) {
                for (int x = 0; x < width; x += step) put(sample(x).u);
            }
            for (int y = 0; y < height; y += step) {
                for (int x = 0; x < width; x += step) put(sample(x).v);
            }
        }
        const std::string samples = OutputPath("patches.raw");
        clips::WriteBytes(samples, raw);
        const std::string size = std::to_string(width) + "x" + std::to_string(height);
        const std::string codec = format == "nv12" ? "rawvideo" : "ffv1";
        const std::string path = Make(std::string("colour_") + one.name + ".mkv",
                                      "-f rawvideo -s " + size + " -pix_fmt " + format + " -i '" +
                                          samples + "' -c:v " + codec + " -frames:v 1 " + one.tags);
        auto reader = MediaReader::Open(path);
        EXPECT_EQ(reader->Info().colorMatrix, one.matrix) << format;
        EXPECT_EQ(reader->Info().fullRange, one.fullRange) << format;
        // Of the same size, and scaled: two different ways through the code.
        for (int scaled : {width, width / 2}) {
            reader->SetOutput(scaled, scaled, FitMode::kStretch);
            Picture picture;
            ASSERT_TRUE(reader->ReadFrameAt(0, picture));
            for (int i = 0; i < 16; ++i) {
                const int x = i * scaled / 16 + scaled / 32;
                ExpectNear(
                    At(picture, x, scaled / 2), clips::Patches()[i], 3,
                    format + " patch " + std::to_string(i) + " of " + std::to_string(scaled));
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(
    MediaReader, Colours,
    testing::Values(ColourCase{"601_limited", 0.299, 0.114, false,
                               "-colorspace smpte170m -color_range tv", "smpte170m", 256},
                    ColourCase{"601_full", 0.299, 0.114, true,
                               "-colorspace smpte170m -color_range pc", "smpte170m", 256},
                    ColourCase{"709_limited", 0.2126, 0.0722, false,
                               "-colorspace bt709 -color_range tv", "bt709", 256},
                    ColourCase{"709_full", 0.2126, 0.0722, true,
                               "-colorspace bt709 -color_range pc", "bt709", 256},
                    ColourCase{"2020_limited", 0.2627, 0.0593, false,
                               "-colorspace bt2020nc -color_range tv", "bt2020nc", 256},
                    ColourCase{"untagged_small", 0.299, 0.114, false, "", "smpte170m", 256},
                    ColourCase{"untagged_large", 0.2126, 0.0722, false, "", "bt709", 736}),
    [](const auto& info) { return info.param.name; });

TEST(MediaReader, APictureIsTheSameAtEveryTime) {
    const Codec cases[] = {{"still.png", ""},        {"still.jpg", "-q:v 2"}, {"still.webp", ""},
                           {"still.bmp", ""},        {"still.tiff", ""},      {"still.gif", ""},
                           {"50%d.png", "-update 1"}};
    for (const Codec& one : cases) {
        std::string path = Make("still_source.png", std::string(kQuarters) + "-frames:v 1");
        const std::string target = OutputPath(one.name);
        if (std::string(one.name) == "50%d.png") {
            std::filesystem::copy_file(path, target,
                                       std::filesystem::copy_options::overwrite_existing);
            path = target;
        } else {
            path = Make(one.name, "-i '" + path + "' -frames:v 1 " + one.arguments);
        }
        auto reader = MediaReader::Open(path);
        EXPECT_TRUE(reader->Info().still) << one.name;
        EXPECT_EQ(reader->Info().frameCount, 1) << one.name;
        for (double seconds : {0.0, 3600.0, -5.0, 0.5}) {
            Picture picture;
            ASSERT_TRUE(reader->ReadFrameAt(seconds, picture));
            EXPECT_FALSE(reader->Ended());
            ExpectQuarters(picture, {kRed, kGreen, kBlue, kWhite}, one.name);
        }
        EXPECT_THAT(reader->Warnings(), testing::IsEmpty()) << one.name;
    }
}

TEST(MediaReader, ReadsNumberedPicturesAtTheirRate) {
    Make("numbered_%03d.png", Numbered(20) + "-start_number 3 -pix_fmt gray");
    auto reader = MediaReader::Open(OutputPath("numbered_%03d.png"), {.sequenceRate = {50, 1}});
    EXPECT_FALSE(reader->Info().still);
    EXPECT_EQ(reader->Info().frameCount, 20);
    EXPECT_NEAR(reader->Info().duration, 0.4, 1e-6);
    Picture picture;
    for (int frame : {0, 1, 7, 19, 4}) {
        ASSERT_TRUE(reader->ReadFrameAt(frame / 50.0, picture));
        EXPECT_EQ(FrameNumber(picture), frame);
    }
}

TEST(MediaReader, TakesTinyAndOddSizes) {
    for (const char* size : {"1x1", "1x7", "3x2", "17x33", "255x3"}) {
        const std::string path =
            Make("odd.mkv", std::string("-f lavfi -i color=0xc86428:s=") + size + ",format=rgb24" +
                                " -frames:v 2 -c:v ffv1 -pix_fmt yuv444p");
        auto reader = MediaReader::Open(path);
        for (int scale : {1, 3}) {
            reader->SetOutput(reader->Info().width * scale, reader->Info().height * scale,
                              FitMode::kStretch);
            Picture picture;
            ASSERT_TRUE(reader->ReadFrameAt(0, picture)) << size;
            ExpectNear(At(picture, picture.width - 1, picture.height - 1), {200, 100, 40}, 4, size);
        }
    }
}

TEST(MediaReader, TheBufferOfAPictureIsUsedAgain) {
    auto reader = MediaReader::Open(Make("again.mp4", Numbered(10) + "-c:v libx264"));
    Picture picture;
    ASSERT_TRUE(reader->ReadFrameAt(0, picture));
    const uint8_t* before = picture.pixels.data();
    for (int frame = 1; frame < 10; ++frame) {
        ASSERT_TRUE(reader->ReadFrameAt(frame / 25.0, picture));
        EXPECT_EQ(picture.pixels.data(), before);
    }
}

}  // namespace
}  // namespace kelmo::host
