// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include <array>
#include <string>

#include "host/media/picture/picture.h"

namespace kelmo::test {

using host::Picture;
using Pixel = std::array<int, 4>;  ///< B, G, R, A as they lie in a picture

/// How far two pictures of one size are from each other.
struct Comparison {
    double psnr = 0;  ///< dB over all four channels; infinite for equal pictures
    int worst = 0;    ///< largest difference of a channel, in levels
    int x = 0;        ///< where that is, from the top left
    int y = 0;
    Pixel expected{};
    Pixel got{};
    double share = 0;  ///< of pixels with a channel further off than the limit, 0..1
};

/// `limit` in levels. Both pictures have one size, which is not empty.
Comparison Compare(const Picture& expected, const Picture& got, int limit = 1);

/// "worst pixel (3, 4): expected (..), got (..), off by 12; ..."
std::string Describe(const Comparison& comparison);

/// What may differ. Measured references: drivers round differently, and an edge may fall to the
/// other side of a pixel's centre.
struct Tolerance {
    double psnr = 34.0;  ///< dB at least
    int limit = 24;      ///< levels; a tenth of the range is where the eye sees another colour
    double shareBeyond = 0.01;  ///< of pixels that may pass the limit
};

/// Pictures that look the same. On failure the message names the worst pixel and the three files
/// (expected, got, difference times eight) that were saved under the test output folder as `name`.
testing::AssertionResult LooksLike(const Picture& expected, const Picture& got,
                                   const std::string& name, const Tolerance& tolerance = {});
/// No channel is further off than `limit` levels.
testing::AssertionResult Equals(const Picture& expected, const Picture& got, int limit,
                                const std::string& name);

/// The first pixel whose colour is brighter than its alpha allows, or success.
testing::AssertionResult IsPremultiplied(const Picture& picture);
/// All pixels are one colour, or nearly (within `limit` levels).
bool IsFlat(const Picture& picture, int limit = 4);

/// The mean of each 2x2 pixels. Width and height are even.
Picture Halved(const Picture& picture);

/// PNG files with straight alpha. Reading throws std::runtime_error that names the file.
Picture ReadPng(const std::string& path);
void WritePng(const std::string& path, const Picture& picture);

/// The absolute difference of the colours, eight times as bright, opaque.
Picture Difference(const Picture& a, const Picture& b);

}  // namespace kelmo::test
