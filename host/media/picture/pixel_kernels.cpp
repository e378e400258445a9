// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/media/picture/pixel_kernels.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>

namespace kelmo::host {

namespace {

int16_t HighProduct(int16_t a, int16_t b) {
    return static_cast<int16_t>((static_cast<int32_t>(a) * b) >> 16);
}

uint16_t HighProduct(uint16_t a, uint16_t b) {
    return static_cast<uint16_t>((static_cast<uint32_t>(a) * b) >> 16);
}

uint8_t ToByte(int16_t value) {
    return static_cast<uint8_t>(std::min<int16_t>(std::max<int16_t>(value, 0), 255));
}

template <typename Integer>
Integer Scaled(double factor, int bits) {
    return static_cast<Integer>(std::lround(std::ldexp(factor, bits)));
}

// (255 << 16) / alpha, so that a multiplication replaces the division.
std::array<uint32_t, 256> MakeAlphaReciprocals() {
    std::array<uint32_t, 256> table{};
    for (uint32_t alpha = 1; alpha < 256; ++alpha) {
        table[alpha] = ((255u << 16) + alpha / 2) / alpha;
    }
    return table;
}

uint32_t PixelAt(const uint8_t* pixel) {
    uint32_t value;
    std::memcpy(&value, pixel, sizeof value);
    return value;
}

}  // namespace

YuvToBgrFactors YuvToBgrFactors::From(LumaWeights weights, bool fullRange) {
    const double green = 1 - weights.red - weights.blue;
    const double luma = fullRange ? 1 : 255.0 / 219;
    const double chroma = fullRange ? 1 : 255.0 / 224;
    YuvToBgrFactors factors;
    factors.lumaOffset = fullRange ? 0 : 16;
    factors.luma = Scaled<int16_t>(luma, 13);
    factors.redFromV = Scaled<int16_t>(chroma * 2 * (1 - weights.red), 13);
    factors.blueFromU = Scaled<int16_t>(chroma * 2 * (1 - weights.blue), 13);
    factors.greenFromV = Scaled<int16_t>(-chroma * 2 * (1 - weights.red) * weights.red / green, 13);
    factors.greenFromU =
        Scaled<int16_t>(-chroma * 2 * (1 - weights.blue) * weights.blue / green, 13);
    return factors;
}

BgrToYuvFactors BgrToYuvFactors::From(LumaWeights weights, bool fullRange) {
    const double green = 1 - weights.red - weights.blue;
    const double luma = fullRange ? 1 : 219.0 / 255;
    const double chroma = fullRange ? 1 : 224.0 / 255;
    BgrToYuvFactors factors;
    factors.lumaFromRed = Scaled<uint16_t>(luma * weights.red, 16);
    factors.lumaFromGreen = Scaled<uint16_t>(luma * green, 16);
    factors.lumaFromBlue = Scaled<uint16_t>(luma * weights.blue, 16);
    factors.lumaOffset = static_cast<uint16_t>((fullRange ? 0 : 16) * 256 + 128);
    const double u = chroma / (2 * (1 - weights.blue));
    const double v = chroma / (2 * (1 - weights.red));
    factors.uFromRed = Scaled<int16_t>(-u * weights.red, 15);
    factors.uFromGreen = Scaled<int16_t>(-u * green, 15);
    factors.uFromBlue = static_cast<int16_t>(-factors.uFromRed - factors.uFromGreen);
    factors.vFromGreen = Scaled<int16_t>(-v * green, 15);
    factors.vFromBlue = Scaled<int16_t>(-v * weights.blue, 15);
    // Grey has no chroma: the three factors cancel out exactly.
    factors.vFromRed = static_cast<int16_t>(-factors.vFromGreen - factors.vFromBlue);
    return factors;
}

void YuvRowToBgra(const uint8_t* __restrict y, const uint8_t* __restrict u,
                  const uint8_t* __restrict v, const uint8_t* __restrict alpha, int width,
                  const YuvToBgrFactors& given, uint8_t* __restrict bgra) {
    const YuvToBgrFactors factors = given;
    // Half a level, and the mean of what each cut product loses.
    const int16_t rounding = 8 + 1;
    for (int x = 0; x < width; ++x) {
        const auto luma = static_cast<int16_t>((y[x] - factors.lumaOffset) * 128);
        const auto cb = static_cast<int16_t>((u[x] - 128) * 128);
        const auto cr = static_cast<int16_t>((v[x] - 128) * 128);
        const auto base = static_cast<int16_t>(HighProduct(luma, factors.luma) + rounding);
        const auto blue = static_cast<int16_t>((base + HighProduct(cb, factors.blueFromU)) >> 4);
        const auto green = static_cast<int16_t>(
            (base + HighProduct(cb, factors.greenFromU) + HighProduct(cr, factors.greenFromV)) >>
            4);
        const auto red = static_cast<int16_t>((base + HighProduct(cr, factors.redFromV)) >> 4);
        bgra[4 * x] = ToByte(blue);
        bgra[4 * x + 1] = ToByte(green);
        bgra[4 * x + 2] = ToByte(red);
        bgra[4 * x + 3] = 255;
    }
    if (!alpha) return;
    for (int x = 0; x < width; ++x) bgra[4 * x + 3] = alpha[x];
}

void RepeatSamples(const uint8_t* __restrict half, int step, int width, uint8_t* __restrict row) {
    const int pairs = width / 2;
    if (step == 1) {
        for (int i = 0; i < pairs; ++i) row[2 * i] = row[2 * i + 1] = half[i];
    } else {
        for (int i = 0; i < pairs; ++i) row[2 * i] = row[2 * i + 1] = half[2 * i];
    }
    if (width % 2) row[width - 1] = half[pairs * step];
}

void BgraRowsToYuv420(const uint8_t* __restrict upper, const uint8_t* __restrict lower, int width,
                      const BgrToYuvFactors& given, uint8_t* upperY, uint8_t* lowerY,
                      uint8_t* __restrict u, uint8_t* __restrict v) {
    const BgrToYuvFactors factors = given;
    const auto luma = [&factors](const uint8_t* __restrict row, int pixels,
                                 uint8_t* __restrict out) {
        for (int x = 0; x < pixels; ++x) {
            const uint16_t blue = static_cast<uint16_t>(row[4 * x] << 8);
            const uint16_t green = static_cast<uint16_t>(row[4 * x + 1] << 8);
            const uint16_t red = static_cast<uint16_t>(row[4 * x + 2] << 8);
            const auto sum =
                static_cast<uint16_t>(HighProduct(blue, factors.lumaFromBlue) +
                                      HighProduct(green, factors.lumaFromGreen) +
                                      HighProduct(red, factors.lumaFromRed) + factors.lumaOffset);
            out[x] = static_cast<uint8_t>(sum >> 8);
        }
    };
    luma(upper, width, upperY);
    luma(lower, width, lowerY);

    // 128 with six bits of fraction, half a level, and the mean of what three cut products lose.
    const int16_t offset = 128 * 64 + 32 + 1;
    const int pairs = width / 2;
    const auto chroma = [&](int i, int second) {
        const auto sum = [&](int channel) {
            return static_cast<int16_t>((upper[8 * i + channel] + upper[8 * i + second + channel] +
                                         lower[8 * i + channel] + lower[8 * i + second + channel])
                                        << 5);
        };
        const int16_t blue = sum(0), green = sum(1), red = sum(2);
        const auto cb = static_cast<int16_t>(HighProduct(blue, factors.uFromBlue) +
                                             HighProduct(green, factors.uFromGreen) +
                                             HighProduct(red, factors.uFromRed) + offset);
        const auto cr = static_cast<int16_t>(HighProduct(blue, factors.vFromBlue) +
                                             HighProduct(green, factors.vFromGreen) +
                                             HighProduct(red, factors.vFromRed) + offset);
        u[i] = ToByte(static_cast<int16_t>(cb >> 6));
        v[i] = ToByte(static_cast<int16_t>(cr >> 6));
    };
    for (int i = 0; i < pairs; ++i) chroma(i, 4);
    if (width % 2) chroma(pairs, 0);
}

void AlphaOfRow(const uint8_t* __restrict bgra, int width, uint8_t* __restrict alpha) {
    for (int x = 0; x < width; ++x) alpha[x] = bgra[4 * x + 3];
}

void PremultiplyRow(uint8_t* bgra, int width) {
    for (int x = 0; x < width; ++x) {
        const unsigned alpha = bgra[4 * x + 3];
        for (int channel = 0; channel < 3; ++channel) {
            const unsigned product = bgra[4 * x + channel] * alpha + 128;
            bgra[4 * x + channel] = static_cast<uint8_t>((product + (product >> 8)) >> 8);
        }
    }
}

void UnpremultiplyRow(const uint8_t* bgra, int width, uint8_t* straight) {
    static const std::array<uint32_t, 256> reciprocals = MakeAlphaReciprocals();
    for (int x = 0; x < width; ++x) {
        const uint8_t alpha = bgra[4 * x + 3];
        if (alpha == 255) {
            std::memcpy(straight + 4 * x, bgra + 4 * x, 4);
            continue;
        }
        const uint32_t reciprocal = reciprocals[alpha];
        for (int channel = 0; channel < 3; ++channel) {
            const uint32_t value = (bgra[4 * x + channel] * reciprocal + 0x8000u) >> 16;
            straight[4 * x + channel] = static_cast<uint8_t>(std::min(value, 255u));
        }
        straight[4 * x + 3] = alpha;
    }
}

void LimitToAlphaRow(uint8_t* bgra, int width) {
    for (int x = 0; x < width; ++x) {
        for (int channel = 0; channel < 3; ++channel) {
            bgra[4 * x + channel] = std::min(bgra[4 * x + channel], bgra[4 * x + 3]);
        }
    }
}

void OpaqueRow(const uint8_t* bgra, int width, uint8_t* opaque) {
    for (int x = 0; x < width; ++x) {
        uint8_t pixel[4];
        std::memcpy(pixel, bgra + 4 * x, 4);
        pixel[3] = 255;
        std::memcpy(opaque + 4 * x, pixel, 4);
    }
}

void CopyOriented(const uint8_t* source, ptrdiff_t sourceStride, int width, int height,
                  Orientation orientation, uint8_t* target, ptrdiff_t targetStride) {
    const int targetWidth = orientation.transposed ? height : width;
    const int targetHeight = orientation.transposed ? width : height;
    // Squares that fit the first cache, for the sake of the columns that a transposition reads.
    constexpr int kBlock = 32;
    for (int top = 0; top < targetHeight; top += kBlock) {
        const int bottom = std::min(top + kBlock, targetHeight);
        for (int left = 0; left < targetWidth; left += kBlock) {
            const int right = std::min(left + kBlock, targetWidth);
            for (int y = top; y < bottom; ++y) {
                uint8_t* row = target + y * targetStride;
                const int turnedY = orientation.flipY ? targetHeight - 1 - y : y;
                for (int x = left; x < right; ++x) {
                    const int turnedX = orientation.flipX ? targetWidth - 1 - x : x;
                    const int sourceX = orientation.transposed ? turnedY : turnedX;
                    const int sourceY = orientation.transposed ? turnedX : turnedY;
                    const uint32_t pixel =
                        PixelAt(source + sourceY * sourceStride + 4 * ptrdiff_t{sourceX});
                    std::memcpy(row + 4 * ptrdiff_t{x}, &pixel, sizeof pixel);
                }
            }
        }
    }
}

}  // namespace kelmo::host
