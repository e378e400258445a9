// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include <fstream>

#include "cli_fixture.h"
#include "host/media/sound/audio_reader.h"

namespace kelmo::host {
namespace {

using nlohmann::json;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

int LineCount(const std::string& text) {
    return static_cast<int>(std::count(text.begin(), text.end(), '\n'));
}

int Count(const std::string& text, const std::string& part) {
    int count = 0;
    for (size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
        ++count;
    }
    return count;
}

bool HaveFonts() {
    return std::filesystem::exists("/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf");
}

/// The state of a part in the doctor's report.
json FindingOf(const json& report, const std::string& part) {
    const json& findings = report["findings"];
    const auto found = std::find_if(findings.begin(), findings.end(),
                                    [&](const json& f) { return f["part"] == part; });
    return found == findings.end() ? json() : *found;
}

TEST_F(CliTest, WrongUseIsToldInOneLineWithTheRightCode) {
    struct Case {
        std::vector<std::string> words;
        int code;
        const char* part;
    };
    const std::vector<std::string> render = {"render", "-e", "Invert", "-i", "dark.mkv"};
    const auto with = [&](std::vector<std::string> more) {
        std::vector<std::string> all = render;
        all.insert(all.end(), more.begin(), more.end());
        return all;
    };
    for (const Case& c : std::vector<Case>{
             {{}, 2, "subcommand"},
             {{"paint"}, 2, "kelmo --help"},
             {{"list", "--type", "sound"}, 2, "--type"},
             {{"info"}, 2, "EFFECT"},
             {{"info", "Invret"}, 1, "did you mean \"Invert\""},
             {{"info", "Twin"}, 1, "000000000005"},
             {{"render", "-e", "Invert", "-i", "dark.mkv"}, 2, "--output"},
             {with({"-o", "o.mkv", "--size", "0x10"}), 2, "is no size"},
             {with({"-o", "o.mkv", "--size", "16385x10"}), 2, "16384"},
             {with({"-o", "o.mkv", "--fps", "fast"}), 2, "is no frame rate"},
             {with({"-o", "o.mkv", "--duration", "soon"}), 2, "is no time"},
             {with({"-o", "o.mkv", "--frames", "0"}), 2, "--frames"},
             {with({"-o", "o.mkv", "--at", "1s"}), 2, "--at"},
             {with({"-o", "o.mkv", "-p", "amuont=3"}), 2, "did you mean \"amount\""},
             {with({"-o", "o.mkv", "-p", "amount=300"}), 2, "goes from 0 to 100"},
             {with({"-o", "o.mkv", "-i", "light.mkv"}), 2, "one input"},
             {with({"-o", "o.mkv", "-e", "Cross Fade", "-i", "light.mkv"}), 2, "must be the first"},
             {{"render", "-e", "Cross Fade", "-i", "dark.mkv", "-o", "o.mkv"}, 2, "two inputs"},
             {{"render", "-e", "Invert", "-o", "o.mkv"}, 2, "-i FILE"},
             {with({"-o", "o.mkv", "--text", "a", "--text-color", "redd"}), 2, "is no colour"},
             {{"render", "-e", "Cross Fade", "-i", "dark.mkv", "-i", "light.mkv", "-o", "o.mkv",
               "--text", "a"},
              2,
              "no --text"},
             {{"render", "-e", "Nothing", "-i", "dark.mkv", "-o", "o.mkv"}, 1, "unknown effect"},
             {{"render", "-e", "Never Ready", "-i", "dark.mkv", "-o", "o.mkv"}, 1, "no shader"},
             {{"render", "-e", "Invert", "-i", "no.mp4", "-o", "o.mkv"}, 1, "no.mp4"},
             {with({"-o", "o.unknown"}), 1, "o.unknown"},
             {with({"-o", "no/such/o.mkv"}), 1, "no/such"},
             {with({"-o", "dark.mkv", "-y"}), 2, "input and output"},
             {with({"-o", "light.mkv"}), 1, "-y"},
             {{"bench", "-e", "Invert", "--size", "x"}, 2, "is no size"},
             {{"bench", "-e", "Invert", "--size", ""}, 2, "is no size"},
             {{"gallery", "-o", "sheet.png"}, 2, "-i PICTURE"},
             {{"gallery", "-i", "half.png", "-o", "g.png", "--tile", ""}, 2, "is no size"},
             {{"gallery", "-y", "-i", "half.png", "-o", "./half.png"}, 2, "input and output"},
             {with({"-o", "o.mkv", "--mask", "no.png"}), 1, "no.png"},
             {with({"-o", "half.png", "--mask", "half.png", "-y"}), 2, "input and output"},
             {with({"-o", "o.mkv", "--pose", "dark.mkv"}), 1, "dark.mkv"},
             {{"render", "-e", "Invert", "--text", "a", "--mask", "half.png", "-o", "o.mkv"},
              2,
              "one input"},
             {{"analyse", "-i", "dark.mkv"}, 2, "--poses FILE"},
             {{"analyse", "-i", "dark.mkv", "--mask", "light.mkv"}, 1, "-y"},
             {{"analyse", "-i", "dark.mkv", "--poses", "dark.mkv", "-y"}, 2, "input and output"},
             {{"analyse", "-i", "dark.mkv", "--poses", "p.json"}, 1, "kelmo doctor"},
             {{"analyse", "-i", "dark.mkv", "--poses", "p", "--faces", "./p"}, 2, "two outputs"},
         }) {
        const RunResult result = Run(c.words);
        const std::string all = testing::PrintToString(c.words);
        EXPECT_EQ(result.exitCode, c.code) << all << result.err;
        EXPECT_THAT(result.err, HasSubstr(c.part)) << all;
        EXPECT_LE(LineCount(result.err), 2) << result.err;
        EXPECT_EQ(result.out, "") << all;
        EXPECT_THAT(NewFiles(), IsEmpty()) << all;
    }
}

TEST_F(CliTest, ABrokenInstallationIsToldWithAnAdvice) {
    const RunResult none = Run({"list"}, "no such folder");
    EXPECT_EQ(none.exitCode, 1);
    EXPECT_THAT(none.err, HasSubstr("--plugins DIR"));
    const RunResult incomplete = Run({"list"}, "missing_export");
    EXPECT_EQ(incomplete.exitCode, 1);
    EXPECT_THAT(incomplete.err, HasSubstr("no export ReleaseQorEffect"));
    const RunResult refusing = Run({"list"}, "no_start");
    EXPECT_EQ(refusing.exitCode, 1);
    EXPECT_THAT(refusing.err, HasSubstr("no catalogue here"));
    EXPECT_THAT(refusing.err, HasSubstr("did not start"));
}

TEST_F(CliTest, ListShowsWhatIsAskedFor) {
    const RunResult all = Run({"list"});
    EXPECT_EQ(all.exitCode, 0);
    EXPECT_EQ(LineCount(all.out), 6);
    EXPECT_THAT(Run({"list", "--type", "text"}).out, HasSubstr("Caption"));
    EXPECT_EQ(LineCount(Run({"list", "--type", "text"}).out), 1);
    EXPECT_EQ(LineCount(Run({"list", "--search", "TWI"}).out), 2);
    const json listed = json::parse(Run({"list", "--type", "transition", "--json"}).out);
    EXPECT_EQ(listed["schema"], 1);
    ASSERT_THAT(listed["effects"], SizeIs(1));
    EXPECT_EQ(listed["effects"][0]["name"], "Cross Fade");
    EXPECT_EQ(listed["effects"][0]["guid"], "AAAAAAAA-0000-0000-0000-000000000002");
}

TEST_F(CliTest, InfoDescribesEveryParameter) {
    const json info = json::parse(Run({"info", "invert", "--json"}).out);
    EXPECT_EQ(info["schema"], 1);
    EXPECT_EQ(info["inputs"], 1);
    ASSERT_THAT(info["parameters"], SizeIs(16));
    EXPECT_EQ(info["parameters"][0],
              json::parse(R"({"name": "amount", "display": "Amount", "kind": "float",
                              "default": 100.0, "min": 0.0, "max": 100.0, "visible": true})"));
    EXPECT_EQ(info["parameters"][2]["default"], "#FF8000");
    EXPECT_EQ(info["parameters"][13]["display"], "Fail at") << "made of failAt";
    EXPECT_THAT(Run({"info", "invert"}).out, HasSubstr("0 .. 100"));
}

TEST_F(CliTest, AFilterGetsEachFrameWithItsValueAndKeepsTheSound) {
    const RunResult result = Run({"render", "-vv", "-e", "Invert", "-i", "dark.mkv", "-o",
                                  "50%.mkv", "-p", "amount=0@0s,100@1s:hold", "--json"});
    ASSERT_EQ(result.exitCode, 0) << result.err;
    const json summary = json::parse(result.out);
    EXPECT_EQ(summary["schema"], 1);
    EXPECT_EQ(summary["frames"], 20);
    const std::vector<int> greens = Greens("50%.mkv");
    ASSERT_THAT(greens, SizeIs(20));
    for (int i = 0; i < 20; ++i) EXPECT_NEAR(greens[i], i < 10 ? 40 : 215, 6) << "frame " << i;
    EXPECT_TRUE(AudioReader::Open(Path("50%.mkv"))->Info().present);
    EXPECT_THAT(result.err, HasSubstr("frame 0 of 20 rate 10/1 amount 0.00"));
    EXPECT_THAT(result.err, HasSubstr("frame 19 of 20 rate 10/1 amount 100.00"));
    EXPECT_THAT(result.err, HasSubstr("samples 4410 loudest 8")) << "the sound reaches the effect";
    EXPECT_THAT(result.err, HasSubstr("shut down"));
    EXPECT_THAT(NewFiles(), ElementsAre("50%.mkv"));
}

TEST_F(CliTest, ParametersBelongToTheEffectBeforeThem) {
    const RunResult result =
        Run({"render",  "-vv",   "-e",       "Invert", "-p",       "count=1", "-e",
             "Caption", "-p",    "count=2",  "-p",     "amount=0", "-i",      "dark.mkv",
             "-o",      "o.mkv", "--frames", "1",      "--audio",  "none"});
    ASSERT_EQ(result.exitCode, 0) << result.err;
    EXPECT_THAT(result.err, HasSubstr("Invert frame 0 of 20 rate 10/1 amount 100.00 count 1"));
    EXPECT_THAT(result.err, HasSubstr("Caption frame 0 of 20 rate 10/1 amount 0.00 count 2"));
    EXPECT_THAT(Greens("o.mkv"), SizeIs(1));
    EXPECT_FALSE(AudioReader::Open(Path("o.mkv"))->Info().present);
}

TEST_F(CliTest, ATransitionJoinsTwoClipsWithTheirSound) {
    const RunResult result = Run({"render", "-e", "Cross Fade", "-i", "dark.mkv", "-i", "light.mkv",
                                  "-o", "o.mkv", "--duration", "5f"});
    ASSERT_EQ(result.exitCode, 0) << result.err;
    const std::vector<int> greens = Greens("o.mkv");
    ASSERT_THAT(greens, SizeIs(35));
    EXPECT_NEAR(greens[14], 40, 6);
    EXPECT_NEAR(greens[15], 40, 6) << "a transition begins with the first clip";
    EXPECT_NEAR(greens[17], 120, 6);
    EXPECT_NEAR(greens[19], 200, 6) << "and ends with the second";
    EXPECT_NEAR(greens[34], 200, 6);
    const auto sound = AudioReader::Open(Path("o.mkv"));
    ASSERT_TRUE(sound->Info().present);
    const auto loudest = [&](double second) {
        std::vector<int16_t> samples(2 * 4410);
        sound->Read(static_cast<int64_t>(second * 44100), 4410, samples.data());
        return *std::max_element(samples.begin(), samples.end());
    };
    EXPECT_GT(loudest(1.0), 6000);
    EXPECT_LT(loudest(1.9), loudest(1.5)) << "the first clip fades out";
    EXPECT_LT(loudest(3.0), 200);
}

TEST_F(CliTest, TheTransitionAloneCanBeWritten) {
    const RunResult result = Run({"render", "-e", "Cross Fade", "-i", "dark.mkv", "-i", "light.mkv",
                                  "-o", "o.mkv", "--duration", "5f", "--transition-only"});
    ASSERT_EQ(result.exitCode, 0) << result.err;
    const std::vector<int> greens = Greens("o.mkv");
    ASSERT_THAT(greens, SizeIs(5));
    EXPECT_NEAR(greens[2], 120, 6);
}

TEST_F(CliTest, PicturesKeepTheirTransparency) {
    const RunResult result =
        Run({"render", "-e", "Invert", "-p", "amount=0", "-i", "half.png", "-o", "o.png"});
    ASSERT_EQ(result.exitCode, 0) << result.err;
    const auto reader = MediaReader::Open(Path("o.png"));
    Picture picture;
    reader->ReadFrameAt(0, picture);
    EXPECT_EQ(picture.width, 32);
    EXPECT_NEAR(picture.pixels[2], 128, 1);
    EXPECT_EQ(picture.pixels[3], 128);
    ASSERT_EQ(Run({"render", "-e", "Invert", "-i", "half.png", "-o", "d.png", "--alpha", "drop"})
                  .exitCode,
              0);
    EXPECT_FALSE(MediaReader::Open(Path("d.png"))->Info().hasAlpha);
}

TEST_F(CliTest, NumberedPicturesAreReadOneToOneAndNotLost) {
    const std::vector<std::string> write = {"render",   "-e",        "Invert",
                                            "-p",       "failAt=-1", "-i",
                                            "dark.mkv", "-p",        "amount=0@0s,100@1s:hold"};
    const auto with = [](std::vector<std::string> words, std::vector<std::string> more) {
        words.insert(words.end(), more.begin(), more.end());
        return words;
    };
    ASSERT_EQ(Run(with(write, {"-o", "o%02d.png"})).exitCode, 0);
    const std::string first = ReadFile(Path("o01.png"));
    const RunResult again = Run(with(write, {"-o", "o%02d.png"}));
    EXPECT_EQ(again.exitCode, 1);
    EXPECT_THAT(again.err, HasSubstr("o01.png exists; overwrite it with -y"));
    const std::vector<std::string> read = {"render", "-e", "Invert", "-i", "o%02d.png"};
    for (const char* output : {"./o%02d.png", "o%2d.png", "o07.png"}) {
        EXPECT_EQ(Run(with(read, {"-y", "-o", output})).exitCode, 2) << output;
    }
    EXPECT_EQ(
        Run({"render", "-y", "-e", "Invert", "-p", "failAt=7", "-i", "dark.mkv", "-o", "o%02d.png"})
            .exitCode,
        1);
    EXPECT_EQ(ReadFile(Path("o01.png")), first);
    EXPECT_THAT(NewFiles(), SizeIs(20));
    ASSERT_EQ(Run(with(read, {"-o", "o.mkv", "--fps", "50"})).exitCode, 0);
    EXPECT_THAT(Greens("o.mkv"), SizeIs(20));
    // Six frames, at five a second, over ten dark masks and a bright one.
    const RunResult masked = Run({"render", "-vv", "-e", "Invert", "-i", "dark.mkv", "--mask",
                                  "o%02d.png", "--fps", "5", "--frames", "6", "-o", "m.mkv"});
    EXPECT_EQ(Count(masked.err, "mask 64x48 from 2"), 1) << masked.err;
}

TEST_F(CliTest, SoundThatCannotBeReadIsTold) {
    const RunResult noise = RunProgram({"ffmpeg", "-v", "error", "-i", "dark.mkv", "-c", "copy",
                                        "-bsf:a", "noise=amount=1", "noisy.mkv"},
                                       folder);
    ASSERT_EQ(noise.exitCode, 0) << noise.err;
    const RunResult noisy = Run({"render", "-e", "Invert", "-i", "noisy.mkv", "-o", "n.mkv"});
    EXPECT_EQ(noisy.exitCode, 0) << noisy.err;
    EXPECT_THAT(noisy.err, HasSubstr("warning: the sound of 'noisy.mkv' is damaged"));
    // What can be opened but once is read for its pictures.
    const RunResult pipe = RunProgram(
        {"sh", "-c",
         "mkfifo in.mkv && { cat dark.mkv >in.mkv & } && exec timeout -s KILL 60 " KELMO_BIN_DIR
         "/kelmo --plugins " KELMO_TEST_PLUGINS "/good render -e Invert -i in.mkv -o o.mkv"},
        folder);
    EXPECT_EQ(pipe.exitCode, 0);
    EXPECT_THAT(pipe.err, HasSubstr("warning: the sound of in.mkv is left out"));
    EXPECT_THAT(Greens("o.mkv"), SizeIs(20));
}

TEST_F(CliTest, ATextIsWhatTheEffectsWorkOn) {
    if (!HaveFonts()) GTEST_SKIP() << "needs the DejaVu fonts";
    const RunResult result =
        Run({"render", "-vv", "-e", "Caption", "--text", "I", "--text-size", "60", "--bold",
             "--text-color", "red", "-i", "light.mkv", "-o", "o.png", "--at", "0"});
    ASSERT_EQ(result.exitCode, 0) << result.err;
    EXPECT_THAT(result.err, HasSubstr("text of 1 pieces, changed 1"));
    Picture picture;
    MediaReader::Open(Path("o.png"))->ReadFrameAt(0, picture);
    EXPECT_NEAR(picture.Row(4)[4 * 4 + 1], 200, 6) << "the input beside the text";
    const uint8_t* middle = picture.Row(24) + 32 * 4;
    EXPECT_EQ(middle[0], 255) << "the stand-in inverts the red text, and the text alone";
    EXPECT_EQ(middle[1], 255);
    EXPECT_EQ(middle[2], 0);
}

TEST_F(CliTest, ATextAloneStandsOnATransparentGround) {
    if (!HaveFonts()) GTEST_SKIP() << "needs the DejaVu fonts";
    const RunResult result = Run(
        {"render", "-e", "Caption", "--text", "I", "-o", "o.png", "--size", "64x48", "--at", "0"});
    ASSERT_EQ(result.exitCode, 0) << result.err;
    Picture picture;
    MediaReader::Open(Path("o.png"))->ReadFrameAt(0, picture);
    EXPECT_EQ(picture.Row(1)[3], 0);
    EXPECT_EQ(picture.width, 64);
}

TEST_F(CliTest, AnEffectThatFailsLeavesNoOutput) {
    const RunResult result =
        Run({"render", "-e", "Invert", "-p", "failAt=7", "-i", "dark.mkv", "-o", "o.mkv"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(result.err, HasSubstr("effect \"Invert\" failed at frame 7: told to fail"));
    EXPECT_THAT(NewFiles(), IsEmpty());
}

TEST_F(CliTest, AFailureKeepsTheOlderFile) {
    std::ofstream(Path("o.mkv")) << "older";
    const RunResult result =
        Run({"render", "-y", "-e", "Invert", "-p", "failAt=7", "-i", "dark.mkv", "-o", "o.mkv"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(ReadFile(Path("o.mkv")), "older");
    EXPECT_THAT(NewFiles(), ElementsAre("o.mkv"));
}

TEST_F(CliTest, AnInterruptLeavesAFileThatPlays) {
    // The effect itself raises the signal, so that it always comes at the same frame.
    const RunResult result =
        Run({"render", "-e", "Invert", "-p", "interruptAt=7", "-i", "dark.mkv", "-o", "o.mkv"});
    EXPECT_EQ(result.exitCode, 130) << result.err;
    EXPECT_THAT(Greens("o.mkv"), SizeIs(8));
    EXPECT_THAT(NewFiles(), ElementsAre("o.mkv"));
    const RunResult whole = Run(
        {"render", "-y", "-e", "Invert", "-p", "interruptAt=19", "-i", "dark.mkv", "-o", "o.mkv"});
    EXPECT_EQ(whole.exitCode, 0) << "it came after the last frame had begun";
    EXPECT_THAT(Greens("o.mkv"), SizeIs(20));
}

TEST_F(CliTest, ATruncatedInputIsAWarning) {
    std::filesystem::copy_file(Path("dark.mkv"), Path("cut.mkv"));
    std::filesystem::resize_file(Path("cut.mkv"),
                                 std::filesystem::file_size(Path("cut.mkv")) * 4 / 10);
    const RunResult result = Run({"render", "-e", "Invert", "-i", "cut.mkv", "-o", "o.mkv"});
    EXPECT_EQ(result.exitCode, 0) << result.err;
    EXPECT_THAT(result.err, HasSubstr("kelmo: warning: ")) << result.err;
    EXPECT_NEAR(Greens("o.mkv").back(), 215, 6);
}

TEST_F(CliTest, AGalleryShowsEveryEffectAndSaysWhichFailed) {
    const RunResult result = Run({"gallery", "-i", "dark.mkv", "-i", "half.png", "-o", "g",
                                  "--each", "--json", "--tile", "64x48"});
    EXPECT_EQ(result.exitCode, 1) << "one of the stand-in's effects never works";
    const json gallery = json::parse(result.out);
    EXPECT_EQ(gallery["failed"], 1);
    ASSERT_THAT(gallery["effects"], SizeIs(6));
    for (const json& effect : gallery["effects"]) {
        if (effect["name"] == "Never Ready") {
            EXPECT_THAT(effect["error"].get<std::string>(), HasSubstr("no shader"));
        } else {
            EXPECT_TRUE(Exists(effect["picture"].get<std::string>()));
        }
    }
    EXPECT_GT(MediaReader::Open(Path("g/sheet.png"))->Info().width, 2 * 64);
    for (const char* again : {"-q", "-y"}) {
        const RunResult run =
            Run({"gallery", again, "-i", "half.png", "-o", "g", "--search", "Invert"});
        EXPECT_EQ(run.exitCode, again == std::string("-y") ? 0 : 1) << run.err;
    }
}

TEST_F(CliTest, BenchMeasuresSoManyFrames) {
    const RunResult result =
        Run({"bench", "-e", "Cross Fade", "--size", "32x24", "--frames", "9", "--json"});
    ASSERT_EQ(result.exitCode, 0) << result.err;
    const json bench = json::parse(result.out);
    EXPECT_EQ(bench["frames"], 9);
    EXPECT_GT(bench["framesPerSecond"].get<double>(), 0);
}

TEST_F(CliTest, MaskAndBodyPointsOfFilesReachTheEffects) {
    std::ofstream(Path("p.json")) << R"({"frameRate": [10, 1], "frames": [
        {"time": 0.2, "bodies": [{"points": {"nose": [0.5, 0.5]}}]}]})";
    const RunResult run = Run({"render", "-vv", "-e", "Invert", "-i", "dark.mkv", "--mask",
                               "light.mkv", "--pose", "p.json", "--frames", "4", "-o", "o.mkv"});
    ASSERT_EQ(run.exitCode, 0) << run.err;
    EXPECT_THAT(run.err, HasSubstr("mask 64x48 from 200 to 200"));
    EXPECT_EQ(run.err.find("block of 164 bytes"), run.err.rfind("block of 164 bytes"))
        << "one frame has a body";
    EXPECT_NE(run.err.find("block of 164 bytes"), std::string::npos);
    const RunResult still = Run({"render", "-vv", "-e", "Invert", "-i", "dark.mkv", "--mask",
                                 "half.png", "--frames", "2", "-o", "p.mkv"});
    ASSERT_EQ(still.exitCode, 0) << still.err;
    EXPECT_THAT(still.err, HasSubstr("mask 64x48 from 129 to 129")) << "its alpha";
}

TEST_F(CliTest, WhatIsSeenInAPictureHoldsForEveryFrameOfIt) {
    const RunResult seen = Run({"analyse", "-i", "half.png", "--poses", "p.json"}, "with_ai");
    ASSERT_EQ(seen.exitCode, 0) << seen.err;
    const RunResult run = Run({"render", "-vv", "-e", "Invert", "-i", "half.png", "--pose",
                               "p.json", "--frames", "3", "--size", "32x48", "-o", "o.mkv"});
    ASSERT_EQ(run.exitCode, 0) << run.err;
    EXPECT_EQ(Count(run.err, "nose at 0.500 0.375"), 3)
        << "a quarter down the picture, which is the middle half of the frame: " << run.err;
}

TEST_F(CliTest, AnAnalysisWritesWhatItSees) {
    std::ofstream(Path("p.json")) << "older";
    const RunResult run = Run({"analyse", "-y", "-i", "dark.mkv", "--mask", "m.png", "--poses",
                               "p.json", "--faces", "f.json", "--json"},
                              "with_ai");
    ASSERT_EQ(run.exitCode, 0) << run.err;
    EXPECT_THAT(run.err, HasSubstr("first frame only")) << "warnings of the writer are shown";
    EXPECT_THAT(NewFiles(), ElementsAre("f.json", "m.png", "p.json"));
    const json poses = json::parse(ReadFile(Path("p.json")));
    ASSERT_THAT(poses["frames"], SizeIs(20));
    EXPECT_EQ(poses["frames"][19]["bodies"][0]["points"]["nose"], json({0.5, 0.25}));
    EXPECT_EQ(json::parse(run.out)["mostFaces"], 1);
    Picture mask;
    MediaReader::Open(Path("m.png"))->ReadFrameAt(0, mask);
    EXPECT_EQ(mask.Row(24)[31 * 4], 255);
    EXPECT_EQ(mask.Row(24)[32 * 4], 0);
}

TEST_F(CliTest, TheDoctorNamesWhatIsMissing) {
    std::filesystem::create_directories(folder / "nowhere/qor_effect/models");
    std::ofstream(Path("nowhere/qor_effect/models/other.tflite")) << "some network";
    const auto report = [this](const char* plugins) {
        const RunResult result = Run({"--resources", Path("nowhere"), "doctor", "--json"}, plugins);
        EXPECT_EQ(result.exitCode, 1);
        return json::parse(result.out);
    };
    const json nothing = report("no such folder");
    EXPECT_EQ(nothing["usable"], false);
    const std::pair<const char*, const char*> kStates[] = {{"plug-in", "broken"},
                                                           {"material", "broken"},
                                                           {"engine", "broken"},
                                                           {"AI library", "missing"},
                                                           {"AI models", "missing"}};
    for (const auto& [part, state] : kStates) {
        SCOPED_TRACE(part);
        EXPECT_EQ(FindingOf(nothing, part)["state"], state);
        EXPECT_NE(FindingOf(nothing, part)["advice"], "");
    }
    EXPECT_EQ(FindingOf(report("with_ai"), "AI models")["detail"], "masks, faces, bodies");
}

TEST_F(CliTest, DeveloperCommandsPassTheirArgumentsOn) {
    std::filesystem::create_directory(folder / "bin");
    std::error_code error;
    std::filesystem::create_hard_link(KELMO_BIN_DIR "/kelmo", folder / "bin" / "kelmo", error);
    if (error) GTEST_SKIP() << "no hard links here: " << error.message();
    for (const std::string name : {"mesh", "measure"}) {
        const std::vector<std::string> words = {Path("bin/kelmo"), name, "--help", "-v", "a b"};
        const RunResult absent = RunProgram(words, folder);
        EXPECT_EQ(absent.exitCode, 1);
        EXPECT_THAT(absent.err, HasSubstr("kelmo-" + name));
        const std::string program = Path("bin/kelmo-" + name);
        std::ofstream(program) << "#!/bin/sh\nprintf '%s|' \"$@\"\nexit 7\n";
        std::filesystem::permissions(program, std::filesystem::perms::owner_all);
        const RunResult run = RunProgram(words, folder);
        EXPECT_EQ(run.exitCode, 7);
        EXPECT_EQ(run.out, "--help|-v|a b|");
    }
}

TEST_F(CliTest, WithoutModelsEffectsForPeopleLeaveTheClipAsItIs) {
    for (const char* file : {"qorOpenGLFilterPlugin.qor", "qorAiFilterPlugin.qor"}) {
        if (!std::filesystem::exists(std::string(KELMO_PLUGIN_DIR "/") + file)) {
            GTEST_SKIP() << file << " is not built";
        }
    }
    std::filesystem::create_directories(folder / "res/qor_effect");
    std::filesystem::create_directory_symlink(KELMO_DATA_DIR "/qor_effect/material",
                                              folder / "res/qor_effect/material");
    for (const char* effect : {"Angel Halo Sticker", "Background Blur", "Face Magnifier"}) {
        SCOPED_TRACE(effect);
        const RunResult run =
            RunProgram({KELMO_BIN_DIR "/kelmo", "--resources", "res", "render", "-y", "-e", effect,
                        "-i", "dark.mkv", "--frames", "2", "-o", "o.mkv"},
                       folder);
        EXPECT_EQ(run.exitCode, 0) << run.err;
        EXPECT_THAT(run.err, HasSubstr("scripts/fetch-models"));
        EXPECT_NEAR(Greens("o.mkv").back(), 40, 6);
    }
}

TEST_F(CliTest, QuietSaysNothingAndVersionSaysOneLine) {
    const RunResult quiet = Run({"render", "-q", "-e", "Invert", "-i", "half.png", "-o", "o.png"});
    EXPECT_EQ(quiet.exitCode, 0);
    EXPECT_EQ(quiet.out + quiet.err, "");
    const RunResult version = Run({"version"});
    EXPECT_EQ(version.exitCode, 0);
    EXPECT_THAT(version.out, testing::MatchesRegex("kelmo [0-9]+\\.[0-9]+\\.[0-9]+\n"));
}

}  // namespace
}  // namespace kelmo::host
