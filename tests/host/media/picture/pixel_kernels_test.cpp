// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/media/picture/pixel_kernels.h"

#include <cmath>
#include <random>

#include "tests/host/media/clips.h"

namespace kelmo::host {
namespace {

using clips::Color;

struct Matrix {
    const char* name;
    LumaWeights weights;
    bool fullRange;
};

const Matrix kMatrices[] = {{"601 limited", {0.299, 0.114}, false},
                            {"601 full", {0.299, 0.114}, true},
                            {"709 limited", {0.2126, 0.0722}, false},
                            {"709 full", {0.2126, 0.0722}, true},
                            {"2020 limited", {0.2627, 0.0593}, false}};

uint8_t Byte(double value) {
    return static_cast<uint8_t>(std::lround(value));
}

TEST(PixelKernels, EverySampleValueOfEveryMatrixIsWithinOneLevelOfTheFormula) {
    for (const Matrix& matrix : kMatrices) {
        const YuvToBgrFactors factors = YuvToBgrFactors::From(matrix.weights, matrix.fullRange);
        const double green = 1 - matrix.weights.red - matrix.weights.blue;
        double worst = 0;
        for (int u = 0; u < 256; u += 15) {
            for (int v = 0; v < 256; v += 15) {
                std::vector<uint8_t> y(256), us(256, static_cast<uint8_t>(u)),
                    vs(256, static_cast<uint8_t>(v)), bgra(1024);
                for (int i = 0; i < 256; ++i) y[i] = static_cast<uint8_t>(i);
                YuvRowToBgra(y.data(), us.data(), vs.data(), nullptr, 256, factors, bgra.data());
                for (int i = 0; i < 256; ++i) {
                    const double luma = matrix.fullRange ? i : (i - 16) * 255.0 / 219;
                    const double scale = matrix.fullRange ? 1 : 255.0 / 224;
                    const double cb = (u - 128) * scale, cr = (v - 128) * scale;
                    const double r = luma + 2 * (1 - matrix.weights.red) * cr;
                    const double b = luma + 2 * (1 - matrix.weights.blue) * cb;
                    const double g =
                        (luma - matrix.weights.red * r - matrix.weights.blue * b) / green;
                    worst = std::max({worst, std::abs(bgra[4 * i] - std::clamp(b, 0.0, 255.0)),
                                      std::abs(bgra[4 * i + 1] - std::clamp(g, 0.0, 255.0)),
                                      std::abs(bgra[4 * i + 2] - std::clamp(r, 0.0, 255.0))});
                }
            }
        }
        EXPECT_LE(worst, 1.0) << matrix.name;
    }
}

TEST(PixelKernels, ColoursComeBackFromHalfResolutionChroma) {
    std::mt19937 random(7);
    for (const Matrix& matrix : kMatrices) {
        const auto forward = BgrToYuvFactors::From(matrix.weights, matrix.fullRange);
        const auto back = YuvToBgrFactors::From(matrix.weights, matrix.fullRange);
        for (int width : {1, 2, 3, 17, 64, 65}) {
            std::vector<uint8_t> row(4 * width), upperY(width), lowerY(width), u((width + 1) / 2),
                v((width + 1) / 2), wideU(width), wideV(width), result(4 * width);
            for (int x = 0; x < width; ++x) {
                for (int c = 0; c < 3; ++c) {
                    row[4 * x + c] = x % 2 ? row[4 * (x - 1) + c] : static_cast<uint8_t>(random());
                }
                row[4 * x + 3] = 255;
            }
            BgraRowsToYuv420(row.data(), row.data(), width, forward, upperY.data(), lowerY.data(),
                             u.data(), v.data());
            RepeatSamples(u.data(), 1, width, wideU.data());
            RepeatSamples(v.data(), 1, width, wideV.data());
            YuvRowToBgra(lowerY.data(), wideU.data(), wideV.data(), nullptr, width, back,
                         result.data());
            for (int i = 0; i < 4 * width; ++i) {
                ASSERT_NEAR(result[i], row[i], 3) << matrix.name << " width " << width << " " << i;
            }
            EXPECT_EQ(upperY, lowerY);
        }
    }
}

TEST(PixelKernels, GreyHasNoChromaAndTheEndsOfTheRangeAreExact) {
    for (const Matrix& matrix : kMatrices) {
        const auto factors = BgrToYuvFactors::From(matrix.weights, matrix.fullRange);
        for (int grey = 0; grey < 256; ++grey) {
            const auto level = static_cast<uint8_t>(grey);
            const uint8_t row[8] = {level, level, level, 255, level, level, level, 255};
            uint8_t upper[2], lower[2], u, v;
            BgraRowsToYuv420(row, row, 2, factors, upper, lower, &u, &v);
            EXPECT_EQ(u, 128) << matrix.name << " " << grey;
            EXPECT_EQ(v, 128) << matrix.name << " " << grey;
            const double exact = matrix.fullRange ? grey : 16 + grey * 219.0 / 255;
            EXPECT_NEAR(upper[0], exact, 0.51) << matrix.name << " " << grey;
        }
    }
}

TEST(PixelKernels, PremultiplyingIsRoundedAndItsInverseKeepsWhatAlphaCanHold) {
    for (int alpha = 0; alpha < 256; ++alpha) {
        for (int color = 0; color < 256; ++color) {
            uint8_t pixel[4] = {static_cast<uint8_t>(color), 0, 255, static_cast<uint8_t>(alpha)};
            PremultiplyRow(pixel, 1);
            ASSERT_EQ(pixel[0], Byte(color * alpha / 255.0)) << color << " * " << alpha;
            ASSERT_EQ(pixel[2], alpha);
            uint8_t straight[4], again[4];
            UnpremultiplyRow(pixel, 1, straight);
            std::copy(straight, straight + 4, again);
            PremultiplyRow(again, 1);
            ASSERT_EQ(again[0], pixel[0]) << color << " / " << alpha;
            if (alpha >= 128) {
                ASSERT_NEAR(straight[0], color, 1);
            }
        }
    }
}

TEST(PixelKernels, EachOrientationPutsTheCornersWhereTheyBelong) {
    // Source: 3 x 2 pixels, numbered row by row.
    //   0 1 2
    //   3 4 5
    struct Case {
        Orientation orientation;
        std::vector<uint32_t> expected;
    };
    const Case cases[] = {
        {{false, false, false}, {0, 1, 2, 3, 4, 5}}, {{false, true, false}, {2, 1, 0, 5, 4, 3}},
        {{false, false, true}, {3, 4, 5, 0, 1, 2}},  {{false, true, true}, {5, 4, 3, 2, 1, 0}},
        {{true, false, false}, {0, 3, 1, 4, 2, 5}},  {{true, true, false}, {3, 0, 4, 1, 5, 2}},
        {{true, false, true}, {2, 5, 1, 4, 0, 3}},   {{true, true, true}, {5, 2, 4, 1, 3, 0}},
    };
    const uint32_t source[] = {0, 1, 2, 3, 4, 5};
    for (const Case& one : cases) {
        std::vector<uint32_t> target(6);
        const int width = one.orientation.transposed ? 2 : 3;
        CopyOriented(reinterpret_cast<const uint8_t*>(source), 12, 3, 2, one.orientation,
                     reinterpret_cast<uint8_t*>(target.data()), 4 * width);
        EXPECT_EQ(target, one.expected);
    }
}

}  // namespace
}  // namespace kelmo::host
