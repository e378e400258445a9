// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/material/test_pictures.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace kelmo::test {
namespace {

using host::Picture;

constexpr int kSamples = 3;  // a side of a pixel
constexpr int kSamplesPerFrame = 1920;
constexpr double kSoundRate = 48000.0;
constexpr double kTurn = 6.283185307179586;

struct Color {
    double r = 0;
    double g = 0;
    double b = 0;
    double a = 1;
};

Color Mix(const Color& from, const Color& to, double t) {
    const double k = std::clamp(t, 0.0, 1.0);
    return {from.r + (to.r - from.r) * k, from.g + (to.g - from.g) * k,
            from.b + (to.b - from.b) * k, from.a + (to.a - from.a) * k};
}

uint32_t HashOf(uint32_t x) {
    x ^= x >> 16;
    x *= 0x7feb352dU;
    x ^= x >> 15;
    x *= 0x846ca68bU;
    return x ^ (x >> 16);
}

double Random(int x, int y) {
    return HashOf(static_cast<uint32_t>(x) * 7919U + HashOf(static_cast<uint32_t>(y))) /
           4294967296.0;
}

uint8_t ToByte(double value) {
    return static_cast<uint8_t>(std::clamp(value, 0.0, 1.0) * 255.0 + 0.5);
}

/// `scene(x, y)` with both from 0 to 1, y down, gives a straight colour.
template <typename Scene>
Picture Draw(int width, int height, Scene scene) {
    Picture picture;
    picture.Resize(width, height);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            Color sum{0, 0, 0, 0};
            for (int k = 0; k < kSamples * kSamples; ++k) {
                const double sx = (x + (k % kSamples + 0.5) / kSamples) / width;
                const double sy = (y + (k / kSamples + 0.5) / kSamples) / height;
                const Color c = scene(sx, sy);
                sum.r += c.r * c.a;
                sum.g += c.g * c.a;
                sum.b += c.b * c.a;
                sum.a += c.a;
            }
            const double scale = 1.0 / (kSamples * kSamples);
            uint8_t* to = picture.Row(y) + x * 4;
            to[3] = ToByte(sum.a * scale);
            to[0] = std::min(ToByte(sum.b * scale), to[3]);
            to[1] = std::min(ToByte(sum.g * scale), to[3]);
            to[2] = std::min(ToByte(sum.r * scale), to[3]);
        }
    }
    return picture;
}

Color CardAt(double x, double y) {
    if (y < 0.3) {  // ramps: red, green, blue, white
        const int row = static_cast<int>(y / 0.075);
        return {row == 0 || row == 3 ? x : 0, row == 1 || row == 3 ? x : 0,
                row == 2 || row == 3 ? x : 0};
    }
    if (y < 0.55) {  // patches
        const int patch = static_cast<int>(x * 8);
        const Color kPatches[] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1},       {1, 1, 0},
                                  {0, 1, 1}, {1, 0, 1}, {0.9, 0.7, 0.6}, {0.2, 0.2, 0.2}};
        return kPatches[std::min(patch, 7)];
    }
    if (x < 0.5) {  // bars that become finer downwards
        const double step = y < 0.7 ? 0.04 : y < 0.85 ? 0.02 : 0.01;
        const bool bright = static_cast<int>(x / step) % 2 == 0;
        return bright ? Color{0.95, 0.95, 0.95} : Color{0.05, 0.08, 0.1};
    }
    Color c = Mix({1, 0.5, 0.1}, {0.1, 0.4, 1}, (y - 0.55) / 0.45);
    c.a = std::clamp((x - 0.55) / 0.4, 0.0, 1.0);
    return c;
}

Color LandscapeAt(double x, double y) {
    const double hills = 0.58 + 0.07 * std::sin(x * 7.0) + 0.03 * std::sin(x * 19.0 + 1.0);
    Color c = Mix({0.20, 0.33, 0.62}, {0.98, 0.66, 0.38}, y / 0.6);
    const double toSun = std::hypot((x - 0.72) * 1.78, y - 0.3);
    if (toSun < 0.06)
        c = {1, 0.95, 0.8};
    else
        c = Mix(c, {1, 0.9, 0.7}, 0.55 * std::exp(-toSun * 7.0));
    if (y > hills) {
        const double field = 0.5 + 0.5 * std::sin(x * 40.0 + y * 90.0 * y);
        c = Mix({0.13, 0.26, 0.12}, {0.35, 0.42, 0.16}, field);
    }
    if (y > 0.82) {
        const double wave = 0.5 + 0.5 * std::sin(y * 160.0 + 4.0 * std::sin(x * 23.0));
        c = Mix({0.10, 0.22, 0.36}, {0.75, 0.6, 0.45}, wave * std::exp(-std::abs(x - 0.7) * 4.0));
    }
    if (x > 0.16 && x < 0.36 && y > 0.45 && y < 0.78) {
        c = y < 0.5 ? Color{0.42, 0.12, 0.1} : Color{0.75, 0.68, 0.6};
        const double wx = std::fmod((x - 0.16) / 0.2 * 3.0, 1.0);
        const double wy = std::fmod((y - 0.5) / 0.28 * 2.0, 1.0);
        if (y > 0.5 && wx > 0.3 && wx < 0.7 && wy > 0.25 && wy < 0.75) c = {1, 0.93, 0.55};
    }
    // Glints on the water: a pixel or two each, the brightest of all, as highlights are.
    for (const auto& [gx, gy] : {std::pair{0.47, 0.86}, {0.62, 0.9}, {0.81, 0.93}}) {
        if (std::hypot((x - gx) * 1.78, y - gy) < 0.009) c = {1, 1, 1};
    }
    return c;
}

Color CityAt(double x, double y) {
    Color c = Mix({0.05, 0.05, 0.2}, {0.25, 0.22, 0.4}, y);
    const int tower = static_cast<int>(x * 5);
    const double top = 0.1 + 0.13 * ((tower * 3) % 5);
    if (y < top) return c;
    c = Mix({0.05, 0.25, 0.28}, {0.1, 0.45, 0.42}, std::fmod(x * 5.0, 1.0));
    const int column = static_cast<int>(x * 30);
    const int row = static_cast<int>(y * 18);
    const bool lit = HashOf(static_cast<uint32_t>(column * 131 + row)) % 3 == 0;
    const double wx = std::fmod(x * 30.0, 1.0);
    const double wy = std::fmod(y * 18.0, 1.0);
    if (lit && wx > 0.25 && wy > 0.3) c = {0.7, 1.0, 0.9};
    return c;
}

}  // namespace

host::Picture TestCard(int width, int height) {
    return Draw(width, height, CardAt);
}
host::Picture Landscape(int width, int height) {
    return Draw(width, height, LandscapeAt);
}
host::Picture City(int width, int height) {
    return Draw(width, height, CityAt);
}

host::Picture NoisyLandscape(int width, int height) {
    Picture picture = Landscape(width, height);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width * 4; ++x) {
            if (x % 4 == 3) continue;
            uint8_t& value = picture.Row(y)[x];
            value = ToByte(value / 255.0 + (Random(x, y) - 0.5) * 48.0 / 255.0);
        }
    }
    return picture;
}

host::Picture Clear(int width, int height) {
    Picture picture;
    picture.Resize(width, height);
    std::fill(picture.pixels.begin(), picture.pixels.end(), uint8_t{0});
    return picture;
}

std::vector<int16_t> LoudSound(int64_t frame) {
    std::vector<int16_t> samples;
    samples.reserve(2 * kSamplesPerFrame);
    for (int i = 0; i < kSamplesPerFrame; ++i) {
        const int64_t at = frame * kSamplesPerFrame + i;
        const double t = static_cast<double>(at) / kSoundRate;
        const double hiss = Random(static_cast<int>(at % 1000003), 7) * 2.0 - 1.0;
        const double value =
            0.5 * std::sin(kTurn * 70.0 * t) + 0.3 * std::sin(kTurn * 900.0 * t) + 0.18 * hiss;
        const auto sample = static_cast<int16_t>(std::lround(value * 32000.0));
        samples.push_back(sample);
        samples.push_back(sample);
    }
    return samples;
}

std::vector<int16_t> Silence() {
    return std::vector<int16_t>(2 * kSamplesPerFrame, 0);
}

}  // namespace kelmo::test
