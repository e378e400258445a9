// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>

namespace kelmo::host {

// Private to this folder: the loops over pixels. They are written so that compilers make vector
// code of them; the file is compiled with -O3. Rows are BGRA, 8 bits a channel, unless said
// otherwise.

// The weights of red and blue in luma; green has the rest.
struct LumaWeights {
    double red = 0.2126;
    double blue = 0.0722;
};

// YCbCr to BGR. Samples are taken times 2^7, factors times 2^13, and the upper half of the product
// (2^-16) leaves four bits of fraction: within one level of the exact value.
struct YuvToBgrFactors {
    int16_t lumaOffset = 0;  // 16 or 0
    int16_t luma = 0;
    int16_t redFromV = 0;
    int16_t greenFromU = 0;  // negative
    int16_t greenFromV = 0;  // negative
    int16_t blueFromU = 0;

    static YuvToBgrFactors From(LumaWeights weights, bool fullRange);
};

// BGR to YCbCr. Luma: samples times 2^8, factors times 2^16, unsigned. Chroma: the sum of four
// samples times 2^5, factors times 2^15.
struct BgrToYuvFactors {
    uint16_t lumaFromRed = 0, lumaFromGreen = 0, lumaFromBlue = 0;
    uint16_t lumaOffset = 0;  // times 2^8, with half a level for rounding
    int16_t uFromRed = 0, uFromGreen = 0, uFromBlue = 0;
    int16_t vFromRed = 0, vFromGreen = 0, vFromBlue = 0;

    static BgrToYuvFactors From(LumaWeights weights, bool fullRange);
};

// One row; u and v have a sample for each pixel. Without `alpha` the row is opaque.
void YuvRowToBgra(const uint8_t* y, const uint8_t* u, const uint8_t* v, const uint8_t* alpha,
                  int width, const YuvToBgrFactors& factors, uint8_t* bgra);

// Repeats each sample: the chroma row of half width becomes one of `width`. `step` is the distance
// between samples in bytes (2 where two planes share a row).
void RepeatSamples(const uint8_t* half, int step, int width, uint8_t* row);

// Two rows of the same width (the second may be the first again at the lower edge) to two rows of
// luma and one of chroma, (width + 1) / 2 samples, each the mean of four pixels.
void BgraRowsToYuv420(const uint8_t* upper, const uint8_t* lower, int width,
                      const BgrToYuvFactors& factors, uint8_t* upperY, uint8_t* lowerY, uint8_t* u,
                      uint8_t* v);

// Takes the alpha channel of a row out.
void AlphaOfRow(const uint8_t* bgra, int width, uint8_t* alpha);

// Straight to premultiplied alpha, in place, rounded to nearest.
void PremultiplyRow(uint8_t* bgra, int width);

// Premultiplied to straight alpha, rounded to nearest; a pixel of alpha 0 becomes black.
void UnpremultiplyRow(const uint8_t* bgra, int width, uint8_t* straight);

// Makes colours no larger than alpha, which a sharpening scaler may leave behind.
void LimitToAlphaRow(uint8_t* bgra, int width);

// Sets alpha to 255: a premultiplied row on black.
void OpaqueRow(const uint8_t* bgra, int width, uint8_t* opaque);

// One of the eight ways to turn and mirror a picture: first exchanged along its diagonal, then
// mirrored.
struct Orientation {
    bool transposed = false;
    bool flipX = false;
    bool flipY = false;

    bool Identity() const { return !transposed && !flipX && !flipY; }
};

// Copies width x height pixels of the source, turned. The target has height x width if transposed.
// Strides in bytes.
void CopyOriented(const uint8_t* source, ptrdiff_t sourceStride, int width, int height,
                  Orientation orientation, uint8_t* target, ptrdiff_t targetStride);

}  // namespace kelmo::host
