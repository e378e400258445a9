// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli_fixture.h"

#include <sys/wait.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <sstream>

#include "host/media/encode/media_writer.h"

namespace kelmo::host {

namespace {

constexpr int kFrames = 20;

void WriteClip(const std::string& path, uint8_t grey, bool sound) {
    WriterOptions options;
    options.width = 64;
    options.height = 48;
    options.frameRate = {10, 1};
    options.crf = 4;
    options.audio = sound ? AudioMode::kEncode : AudioMode::kNone;
    options.reproducible = true;
    const auto writer = MediaWriter::Open(path, options);
    Picture picture;
    picture.Resize(64, 48);
    for (size_t i = 0; i < picture.pixels.size(); ++i) {
        picture.pixels[i] = i % 4 == 3 ? 255 : grey;
    }
    for (int frame = 0; frame < kFrames; ++frame) {
        writer->WriteFrame(picture);
        std::vector<int16_t> samples(2 * 4410);
        for (size_t i = 0; i < samples.size(); ++i) {
            samples[i] = static_cast<int16_t>(8000 * std::sin(static_cast<double>(i / 2) * 0.06));
        }
        if (sound) writer->WriteAudio(samples.data(), 4410);
    }
    writer->Finish();
}

void WriteHalf(const std::string& path) {
    WriterOptions options;
    options.width = 32;
    options.height = 24;
    options.keepAlpha = true;
    const auto writer = MediaWriter::Open(path, options);
    Picture picture;
    picture.Resize(32, 24);
    for (size_t i = 0; i < picture.pixels.size(); i += 4) {
        picture.pixels[i + 2] = 128;
        picture.pixels[i + 3] = 128;
    }
    writer->WriteFrame(picture);
    writer->Finish();
}

std::string Quoted(const std::string& word) {
    std::string quoted = "'";
    for (const char c : word) quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return quoted + "'";
}

}  // namespace

std::string ReadFile(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

RunResult RunProgram(const std::vector<std::string>& words, const std::filesystem::path& folder) {
    std::string command = "cd " + Quoted(folder.string()) + " && exec";
    for (const std::string& word : words) command += " " + Quoted(word);
    const std::filesystem::path out = folder.string() + ".out";
    const std::filesystem::path err = folder.string() + ".err";
    command += " </dev/null >" + Quoted(out.string()) + " 2>" + Quoted(err.string());
    const int status = std::system(command.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, ReadFile(out), ReadFile(err)};
}

void CliTest::SetUp() {
    const testing::TestInfo* test = testing::UnitTest::GetInstance()->current_test_info();
    folder = std::filesystem::path(KELMO_TEST_OUTPUT_DIR) / "host_cli" / test->name();
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder);
    WriteClip(Path("dark.mkv"), 40, true);
    WriteClip(Path("light.mkv"), 200, false);
    WriteHalf(Path("half.png"));
}

RunResult CliTest::Run(const std::vector<std::string>& words, const std::string& plugins) const {
    std::vector<std::string> all;
    for (const char* word : {KELMO_BIN_DIR "/kelmo", "--plugins"}) all.emplace_back(word);
    all.push_back(KELMO_TEST_PLUGINS "/" + plugins);
    all.insert(all.end(), words.begin(), words.end());
    return RunProgram(all, folder);
}

std::vector<std::string> CliTest::NewFiles() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        const std::string name = entry.path().filename().string();
        if (name != "dark.mkv" && name != "light.mkv" && name != "half.png") names.push_back(name);
    }
    std::sort(names.begin(), names.end());
    return names;
}

std::vector<int> CliTest::Greens(const std::string& name) const {
    const auto reader = MediaReader::Open(Path(name));
    const MediaInfo& info = reader->Info();
    const int64_t frames = std::max<int64_t>(1, info.frameRate.FramesIn(info.duration));
    std::vector<int> greens;
    Picture picture;
    for (int64_t i = 0; i < frames; ++i) {
        reader->ReadFrameAt(info.frameRate.TimeOf(i), picture);
        greens.push_back(picture.Row(picture.height / 2)[picture.width / 2 * 4 + 1]);
    }
    return greens;
}

}  // namespace kelmo::host
