// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <errno.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "host/media/decode/media_reader.h"
#include "host/media/encode/media_writer.h"
#include "host/media/sound/audio_reader.h"

// Clips that the tests make with the ffmpeg program, and what they compare them with.
namespace kelmo::host::clips {

inline std::string OutputPath(const std::string& name) {
    const std::filesystem::path folder =
        std::filesystem::path(KELMO_TEST_OUTPUT_DIR) / program_invocation_short_name;
    std::filesystem::create_directories(folder);
    return (folder / name).string();
}

// Runs "ffmpeg ARGUMENTS 'PATH'" and gives the path back.
inline std::string Make(const std::string& name, const std::string& arguments) {
    const std::string path = OutputPath(name);
    const std::string command = "ffmpeg -nostdin -v error -y " + arguments + " '" + path + "' 2>&1";
    EXPECT_EQ(std::system(command.c_str()), 0) << command;
    return path;
}

// A grey clip of 64x48 whose level tells the number of the frame (up to 54 frames).
inline std::string Numbered(int frames, int rate = 25) {
    return "-f lavfi -i \"nullsrc=s=64x48:r=" + std::to_string(rate) +
           ":d=" + std::to_string(static_cast<double>(frames) / rate) +
           ",format=yuv420p,geq=lum=16+4*N:cb=128:cr=128\" ";
}

inline int FrameNumber(const Picture& picture) {
    const uint8_t* pixel = picture.Row(picture.height / 2) + 4 * (picture.width / 2);
    return static_cast<int>(std::lround(pixel[1] * 219.0 / 255 / 4));
}

struct Color {
    int red = 0, green = 0, blue = 0, alpha = 255;
};

inline Color At(const Picture& picture, int x, int y) {
    const uint8_t* pixel = picture.Row(y) + 4 * x;
    return {pixel[2], pixel[1], pixel[0], pixel[3]};
}

inline void ExpectNear(const Color& got, const Color& expected, int limit,
                       const std::string& where) {
    EXPECT_TRUE(std::abs(got.red - expected.red) <= limit &&
                std::abs(got.green - expected.green) <= limit &&
                std::abs(got.blue - expected.blue) <= limit &&
                std::abs(got.alpha - expected.alpha) <= limit)
        << where << ": got " << got.red << " " << got.green << " " << got.blue << " " << got.alpha
        << ", expected " << expected.red << " " << expected.green << " " << expected.blue << " "
        << expected.alpha;
}

inline void Fill(Picture& picture, int left, int top, int width, int height, const Color& color) {
    for (int y = top; y < top + height; ++y) {
        for (int x = left; x < left + width; ++x) {
            uint8_t* pixel = picture.Row(y) + 4 * x;
            pixel[0] = static_cast<uint8_t>(color.blue);
            pixel[1] = static_cast<uint8_t>(color.green);
            pixel[2] = static_cast<uint8_t>(color.red);
            pixel[3] = static_cast<uint8_t>(color.alpha);
        }
    }
}

inline Picture Solid(int width, int height, const Color& color) {
    Picture picture;
    picture.Resize(width, height);
    Fill(picture, 0, 0, width, height, color);
    return picture;
}

// The message of the MediaError that `action` throws, or a failure.
template <typename Action>
std::string ErrorOf(Action action) {
    try {
        action();
    } catch (const MediaError& error) {
        return error.what();
    }
    ADD_FAILURE() << "no MediaError was thrown";
    return {};
}

inline std::vector<uint8_t> Bytes(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

inline void WriteBytes(const std::string& path, const std::vector<uint8_t>& bytes) {
    std::ofstream file(path, std::ios::binary);
    file.write(reinterpret_cast<const char*>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
}

// Keeps the first part of a file.
inline std::string Truncated(const std::string& path, const std::string& name, double share) {
    std::vector<uint8_t> bytes = Bytes(path);
    bytes.resize(static_cast<size_t>(static_cast<double>(bytes.size()) * share));
    const std::string cut = OutputPath(name);
    WriteBytes(cut, bytes);
    return cut;
}

// Exact studio or full range YCbCr of a colour, by the definition.
struct Yuv {
    double y, u, v;
};

inline Yuv YuvOf(const Color& color, double weightRed, double weightBlue, bool fullRange) {
    const double r = color.red / 255.0, g = color.green / 255.0, b = color.blue / 255.0;
    const double luma = weightRed * r + (1 - weightRed - weightBlue) * g + weightBlue * b;
    const double u = (b - luma) / (2 * (1 - weightBlue));
    const double v = (r - luma) / (2 * (1 - weightRed));
    if (fullRange) return {255 * luma, 128 + 255 * u, 128 + 255 * v};
    return {16 + 219 * luma, 128 + 224 * u, 128 + 224 * v};
}

inline const std::vector<Color>& Patches() {
    static const std::vector<Color> patches = {
        {0, 0, 0},       {255, 255, 255}, {255, 0, 0},     {0, 255, 0},
        {0, 0, 255},     {255, 255, 0},   {0, 255, 255},   {255, 0, 255},
        {128, 128, 128}, {32, 32, 32},    {224, 172, 140}, {90, 60, 48},
        {20, 120, 220},  {200, 40, 90},   {60, 160, 70},   {250, 240, 200}};
    return patches;
}

}  // namespace kelmo::host::clips
