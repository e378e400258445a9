// SPDX-License-Identifier: GPL-3.0-or-later
#include "framework/astc/astc_block.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <sstream>

#include "block_writer.h"
#include "framework/astc/astc_block_mode.h"
#include "framework/astc/astc_paint.h"
#include "framework/astc/astc_quantization.h"

namespace astc_codec::test {

namespace {

struct Texels {
    alignas(16) uint8_t bytes[(kMaxBlockTexels + kTexelPadding) * 4] = {};

    std::vector<int> At(int index) const { return {bytes + index * 4, bytes + index * 4 + 4}; }
};

bool Decode(const std::array<uint8_t, 16>& block, unsigned width, unsigned height, Texels& texels) {
    return DecodeBlock(block.data(), *FindFootprint(width, height), texels.bytes);
}

bool Decodes(const std::array<uint8_t, 16>& block, unsigned width = 4, unsigned height = 4) {
    Texels texels;
    return Decode(block, width, height, texels);
}

std::array<uint8_t, 16> Bytes(const char* hex) {
    std::istringstream stream(hex);
    std::array<uint8_t, 16> bytes{};
    for (uint8_t& byte : bytes) {
        unsigned value = 0;
        stream >> std::hex >> value;
        byte = static_cast<uint8_t>(value);
    }
    return bytes;
}

std::string Rows(const Texels& texels, int width, int height) {
    std::string text;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const uint8_t* const p = texels.bytes + (y * width + x) * 4;
            char color[16];
            std::snprintf(color, sizeof color, "%02X%02X%02X%02X%s", p[0], p[1], p[2], p[3],
                          x + 1 < width ? " " : "\n");
            text += color;
        }
    }
    return text;
}

/// Weights 0, 1, 2, 3 of four levels: the ends of a ramp and two steps between, four times.
const std::vector<unsigned> kSteps = {0, 1, 2, 3, 0, 1, 2, 3, 0, 1, 2, 3, 0, 1, 2, 3};

}  // namespace

TEST(AstcBlock, WorkedBlocksDecodeAsByHand) {
    struct Case {
        const char* what;
        const char* block;
        int width;
        int height;
        const char* rows;
    };
    const std::vector<Case> cases = {
        {"3 x 4 grid of 24 levels, offsets, contraction",
         "CF 23 D3 87 9C 82 24 12 B6 AF BF AC A6 AE 6C 07", 4, 4,
         "310A0DFF 360F0CFF 39120BFF 3A140AFF\n350F0CFF 360F0BFF 350F0CFF 330C0CFF\n"
         "37110BFF 340E0CFF 36100BFF 3E1809FF\n39120BFF 38120BFF 38110BFF 37110BFF\n"},
        {"dual plane on alpha", "13 A4 35 E5 FC 23 C0 5C 61 C3 49 67 D6 B6 9B 8B", 4, 4,
         "19C28105 0DDB8607 11D38406 15CA8306\n18C58106 11D38407 10D48507 14CC8306\n"
         "16C88207 15CA8206 10D68507 14CD8307\n15CA8308 19C28106 0FD78508 13CF8307\n"},
        {"two partitions of different modes", "B2 0A 17 13 AA 0C 9D 1A B3 FC D4 AF 84 DA EE C8", 5,
         4,
         "ADADAD6A 5A5A5A8B 0036874F 00317B63 00245A9A\n"
         "CCCCCC5E 5A5A5A8B 002C6E78 002C6E78 B8B8B866\n"
         "C6C6C660 77777780 002A6A7F 00286489 B8B8B866\n"
         "9B9B9B71 B5B5B567 00317B63 7F7F7F7C 00245A9A\n"},
        {"four partitions, one without texels", "BF 39 91 3E 8C 52 CD DD 56 69 67 4D 92 15 5B 58",
         4, 4,
         "0C4830FF 0D4C33FF 0C4830FF 0A3C28FF\n0E5438FF 0E5639FF 0D5035FF 0B402BFF\n"
         "0E5438FF 0F583BFF 0E5237FF B7B7B751\n0C4830FF C4C4C444 0E5237FF 0B422CFF\n"},
        {"three partitions, 18 colour values", "2F 73 AF 01 8B D7 CC D9 8F E8 4F A1 D1 40 9A C7", 4,
         4,
         "FCBD5BFF 4DC221FF 45BA26FF 3FB32AFF\n3CB02DFF 41B629FF 4CC122FF 51C61EFF\n"
         "299E39FF 34A932FF 43B828FF FBBC5AFF\n178B45FF 21953FFF 2EA236FF F3B656FF\n"},
        {"dual plane on green, three partitions, 40 weights in trits",
         "D1 54 D9 FA 02 F2 2D 82 EC 51 97 F6 A2 B0 0C 1B", 6, 5,
         "9899CBFF 9899CBFF 9898CBFF 9898CBFF 9898CBFF 9898CBFF\n"
         "9899CBFF 9998CCFF 9898CBFF 9898CBFF 9898CBFF 9998CCFF\n"
         "9998CCFF 9998CCFF 9998CCFF 9998CCFF 9998CCFF 9998CCFF\n"
         "66666633 66666633 66666633 66666633 66666633 66666633\n"
         "66666633 66666633 66666633 66666633 66666633 66666633\n"},
        {"constant colour", "FC FD FF FF FF FF FF FF 34 12 78 56 00 FF FF 80", 4, 4,
         "1256FF80 1256FF80 1256FF80 1256FF80\n1256FF80 1256FF80 1256FF80 1256FF80\n"
         "1256FF80 1256FF80 1256FF80 1256FF80\n1256FF80 1256FF80 1256FF80 1256FF80\n"},
    };
    for (const Case& c : cases) {
        Texels texels;
        ASSERT_TRUE(Decode(Bytes(c.block), static_cast<unsigned>(c.width),
                           static_cast<unsigned>(c.height), texels))
            << c.what;
        EXPECT_EQ(Rows(texels, c.width, c.height), c.rows) << c.what;
    }
}

TEST(AstcBlock, EndpointModesGiveTheirColors) {
    struct Case {
        const char* what;
        unsigned mode;
        std::vector<unsigned> values;
        std::vector<int> first;
        std::vector<int> second;
    };
    const std::vector<Case> cases = {
        {"grey", 0, {10, 200}, {10, 10, 10, 255}, {200, 200, 200, 255}},
        // 0x83: base 32 with the offset's two top bits; offset 0x3F.
        {"grey and offset", 1, {0x83, 0x7F}, {96, 96, 96, 255}, {159, 159, 159, 255}},
        {"grey and offset, beyond white",
         1,
         {0xFC, 0xFF},
         {255, 255, 255, 255},
         {255, 255, 255, 255}},
        {"grey with alpha", 4, {1, 2, 3, 4}, {1, 1, 1, 3}, {2, 2, 2, 4}},
        // Offsets 20 and -1.
        {"grey with alpha and offsets",
         5,
         {200, 40, 100, 0x7E},
         {100, 100, 100, 50},
         {120, 120, 120, 49}},
        {"scaled", 6, {200, 100, 50, 128}, {100, 50, 25, 255}, {200, 100, 50, 255}},
        {"colours in order", 8, {1, 2, 3, 4, 5, 6}, {1, 3, 5, 255}, {2, 4, 6, 255}},
        {"equal sums are in order", 8, {2, 1, 3, 4, 5, 5}, {2, 3, 5, 255}, {1, 4, 5, 255}},
        {"colours swapped: contraction",
         8,
         {100, 10, 50, 20, 30, 40},
         {25, 30, 40, 255},
         {65, 40, 30, 255}},
        {"colours with offsets", 9, {100, 2, 60, 4, 20, 6}, {50, 30, 10, 255}, {51, 32, 13, 255}},
        // Offsets -2, 0, 0: the sum is negative.
        {"negative offsets: contraction",
         9,
         {100, 0x7C, 60, 0, 20, 0},
         {29, 20, 10, 255},
         {30, 20, 10, 255}},
        // Offset -2 on a base of 0: contraction of -2 rounds down before it is clamped.
        {"negative colours are clamped last",
         9,
         {0, 0x7C, 0, 0, 1, 0},
         {0, 0, 0, 255},
         {0, 0, 0, 255}},
        {"scaled with alphas", 10, {200, 100, 50, 128, 7, 9}, {100, 50, 25, 7}, {200, 100, 50, 9}},
        {"colours with alpha", 12, {1, 2, 3, 4, 5, 6, 70, 80}, {1, 3, 5, 70}, {2, 4, 6, 80}},
        {"swapped ends take their alpha along",
         12,
         {100, 10, 50, 20, 30, 40, 70, 80},
         {25, 30, 40, 80},
         {65, 40, 30, 70}},
        {"offsets with alpha",
         13,
         {100, 2, 60, 4, 20, 6, 80, 20},
         {50, 30, 10, 40},
         {51, 32, 13, 50}},
        // Alpha falls by 2: that alone swaps nothing.
        {"a falling alpha keeps the order",
         13,
         {100, 2, 60, 4, 20, 6, 80, 0x7C},
         {50, 30, 10, 40},
         {51, 32, 13, 38}},
    };
    for (const Case& c : cases) {
        Texels texels;
        ASSERT_TRUE(Decode(PlainBlock(c.mode, c.values, kSteps).Bytes(), 4, 4, texels)) << c.what;
        EXPECT_EQ(texels.At(0), c.first) << c.what;
        EXPECT_EQ(texels.At(3), c.second) << c.what;
    }
}

TEST(AstcBlock, HighRangeModesAreRefused) {
    for (const unsigned mode : {2U, 3U, 7U, 11U, 14U, 15U}) {
        EXPECT_FALSE(Decodes(PlainBlock(mode, {}, kSteps).Bytes())) << mode;
    }
    // The same in one of two partitions.
    const auto twoModes = [](unsigned second) {
        BlockWriter block;
        // Grid 4 x 4 of 4 levels (32 bits), selector 1, both of class 0, second mode on top.
        block.Put(0, 11, 0x42).Put(11, 2, 1).Put(13, 10, 5).Put(23, 2, 1);
        block.Put(128 - 32 - 2, 2, second);
        return block.Bytes();
    };
    EXPECT_TRUE(Decodes(twoModes(1)));
    EXPECT_FALSE(Decodes(twoModes(2)));
}

TEST(AstcBlock, ConstantColorsFollowTheirExtent) {
    struct Case {
        const char* what;
        unsigned mark;
        unsigned minX, maxX, minY, maxY;
        bool decodes;
    };
    const std::vector<Case> cases = {
        {"no extent", 3, 0x1FFF, 0x1FFF, 0x1FFF, 0x1FFF, true},
        {"an extent", 3, 1, 2, 3, 4, true},
        {"empty across", 3, 2, 2, 3, 4, false},
        {"reversed down", 3, 1, 2, 4, 3, false},
        {"ones on one axis only", 3, 0x1FFF, 0x1FFF, 3, 4, false},
        {"bit 10 missing", 2, 1, 2, 3, 4, false},
        {"bit 11 missing", 1, 1, 2, 3, 4, false},
    };
    for (const Case& c : cases) {
        for (const unsigned highRange : {0U, 1U}) {
            BlockWriter block;
            block.Put(0, 9, 0x1FC).Put(9, 1, highRange).Put(10, 2, c.mark);
            block.Put(12, 13, c.minX).Put(25, 13, c.maxX).Put(38, 13, c.minY).Put(51, 13, c.maxY);
            block.Put(64, 16, 0x01FF).Put(80, 16, 0x80FF).Put(96, 16, 0xFF00).Put(112, 16, 0x7FFF);
            Texels texels;
            ASSERT_EQ(Decode(block.Bytes(), 12, 12, texels), c.decodes) << c.what;
            if (!c.decodes) continue;
            EXPECT_THAT(texels.At(0), testing::ElementsAre(1, 0x80, 0xFF, 0x7F)) << c.what;
            EXPECT_EQ(texels.At(143), texels.At(0)) << c.what;
        }
    }
}

TEST(AstcBlock, IllegalBlocksAreRefused) {
    struct Case {
        const char* what;
        BlockWriter block;
        unsigned side;
        bool decodes;
    };
    const auto mode = [](unsigned bits, unsigned partitions = 1) {
        return BlockWriter().Put(0, 11, bits).Put(11, 2, partitions - 1);
    };
    const std::vector<Case> cases = {
        {"reserved: low four bits 0", mode(0x000), 12, false},
        {"reserved: low four bits 0, others set", mode(0x650), 12, false},
        {"reserved: 111 in bits 8..6", mode(0x1C4), 12, false},
        {"6 x 10 of 3 levels: 96 bits", mode(0x194), 12, true},
        {"6 x 10 of 6 levels: 156 bits", mode(0x18C), 12, false},
        {"6 x 10 of 2 levels", mode(0x184), 12, true},
        {"the same in a block of 8 x 8", mode(0x184), 8, false},
        {"10 x 6 of 2 levels", mode(0x1A4), 12, true},
        {"8 x 8 of 2 levels: 64 weights", mode(0x544), 12, true},
        {"9 x 8: 72 weights", mode(0x564), 12, false},
        {"12 x 5 of 2 levels", mode(0x064), 12, true},
        {"6 x 4 of 2 levels: 24 bits", mode(0x141), 6, true},
        {"5 x 4 of 2 levels: 20 bits", mode(0x0C1), 6, false},
        {"grid of 5 in a block of 4", mode(0x0C2), 4, false},
        {"grid of 5 in a block of 5", mode(0x0C2), 5, true},
        {"dual plane: 32 weights", mode(0x442), 4, true},
        {"dual plane, 3 partitions of grey", mode(0x442, 3), 4, true},
        {"dual plane, 4 partitions", mode(0x442, 4), 4, false},
        {"4 partitions of grey", mode(0x042, 4), 4, true},
        {"3 partitions of colour: 18 values", mode(0x042, 3).Put(25, 4, 8), 4, true},
        {"4 partitions of colour: 24 values", mode(0x042, 4).Put(25, 4, 8), 4, false},
        {"3 partitions with alpha: 24 values", mode(0x042, 3).Put(25, 4, 12), 4, false},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(Decodes(c.block.Bytes(), c.side, c.side), c.decodes) << c.what;
    }
}

TEST(AstcBlock, TooFewBitsForTheColorsAreRefused) {
    // 5 x 5 weights of 12 levels take 90 bits (25 * 2 + 40): 21 bits are left of one partition's
    // 111. Six values of 6 levels need 16, eight need 21, and dual plane takes two bits more.
    BlockWriter block;
    const BlockMode* found = nullptr;
    unsigned bits = 0;
    for (; bits < 2048; ++bits) {
        const BlockMode& mode = BlockModeOf(bits);
        if (mode.legal && mode.weightBits == 90 && mode.gridWidth == 5 && mode.gridHeight == 5) {
            found = &mode;
            break;
        }
    }
    ASSERT_NE(found, nullptr);
    block.Put(0, 11, bits).Put(13, 4, 12);
    EXPECT_TRUE(Decodes(block.Bytes(), 5, 5));
    // Two partitions of one mode have 9 bits: 2 grey pairs need 11, so nothing fits.
    block.Put(11, 2, 1).Put(13, 16, 0);
    EXPECT_FALSE(Decodes(block.Bytes(), 5, 5));
}

TEST(AstcBlock, PlanesAndSelectorsTakeTheirOwnWeights) {
    for (unsigned channel = 0; channel < 4; ++channel) {
        // Grid 4 x 4 of 2 levels, dual plane (32 bits): the first plane 0, the second 1 everywhere.
        BlockWriter block;
        block.Put(0, 11, 0x441).Put(13, 4, 12).Put(128 - 32 - 2, 2, channel);
        ASSERT_EQ(BlockModeOf(0x441).weightBits, 32);
        const unsigned colors[] = {10, 110, 20, 120, 30, 130, 40, 140};
        // 77 bits for 8 values: 192 levels would not do for plain numbers, so the range is looked
        // up and the stored values are searched by what they mean.
        const int range = ColorRangeFor(8, 128 - 32 - 2 - 17);
        ASSERT_EQ(ColorRange(range).Levels(), 256);
        for (unsigned i = 0; i < 8; ++i) block.Put(17 + 8 * i, 8, colors[i]);
        for (unsigned i = 0; i < 16; ++i) block.PutWeightBits(2 * i, 2, 2);
        Texels texels;
        ASSERT_TRUE(Decode(block.Bytes(), 4, 4, texels));
        std::vector<int> expected = {10, 20, 30, 40};
        expected[channel] += 100;
        for (int i = 0; i < 16; ++i) EXPECT_EQ(texels.At(i), expected) << channel;
    }
}

TEST(AstcBlock, UnusedBitsChangeNothing) {
    BlockWriter block = PlainBlock(0, {10, 200}, kSteps);
    Texels clear;
    ASSERT_TRUE(Decode(block.Bytes(), 4, 4, clear));
    block.Put(17 + 16, 96 - 33, ~uint64_t{0});
    Texels filled;
    ASSERT_TRUE(Decode(block.Bytes(), 4, 4, filled));
    EXPECT_EQ(Rows(clear, 4, 4), Rows(filled, 4, 4));
}

TEST(AstcPaint, EveryBlendIsTheDefinedOne) {
    int different = 0;
    for (int first = 0; first < 256; ++first) {
        for (int second = 0; second < 256; ++second) {
            Endpoints ends;
            ends.first.fill(static_cast<uint8_t>(first));
            ends.second.fill(static_cast<uint8_t>(second));
            TexelWeights weights{};
            for (std::size_t i = 0; i <= 64; ++i) weights[i] = static_cast<uint8_t>(i);
            PaintJob job;
            job.texels = 65;
            job.endpoints = &ends;
            job.weights = &weights;
            Texels texels;
            Paint(job, texels.bytes);
            for (int weight = 0; weight <= 64; ++weight) {
                for (int channel = 0; channel < 4; ++channel) {
                    different +=
                        texels.bytes[weight * 4 + channel] != BlendChannel(first, second, weight);
                }
            }
        }
    }
    EXPECT_EQ(different, 0);
    EXPECT_EQ(BlendChannel(0, 255, 32), 127);
}

TEST(AstcQuantization, StoredValuesMeanWhatTheTablesSay) {
    const auto weights = [](int range) {
        const uint8_t* const values = WeightValues(range);
        return std::vector<int>(values, values + WeightRange(range).Levels());
    };
    EXPECT_THAT(weights(1), testing::ElementsAre(0, 32, 64));
    EXPECT_THAT(weights(3), testing::ElementsAre(0, 16, 32, 48, 64));
    EXPECT_THAT(weights(5), testing::ElementsAre(0, 9, 18, 27, 37, 46, 55, 64));
    EXPECT_THAT(weights(7), testing::ElementsAre(0, 64, 17, 47, 5, 59, 23, 41, 11, 53, 28, 36));
    EXPECT_THAT(weights(9), testing::ElementsAre(0, 64, 16, 48, 3, 61, 19, 45, 6, 58, 23, 41, 9, 55,
                                                 26, 38, 13, 51, 29, 35));
    // Every range holds each of its meanings once, and mirrors them around the middle.
    for (int range = 0; range < kColorRanges; ++range) {
        const int levels = ColorRange(range).Levels();
        std::vector<int> values(ColorValues(range), ColorValues(range) + levels);
        std::sort(values.begin(), values.end());
        for (int i = 0; i < levels; ++i) {
            const auto at = [&values](int index) {
                return values[static_cast<std::size_t>(index)];
            };
            EXPECT_EQ(at(i) + at(levels - 1 - i), 255) << levels;
            if (i == 0) continue;
            EXPECT_LT(at(i - 1), at(i)) << levels;
        }
    }
    const uint8_t* const forty = ColorValues(8);
    EXPECT_THAT(std::vector<int>(forty, forty + 16),
                testing::ElementsAre(0, 255, 32, 223, 65, 190, 97, 158, 6, 249, 39, 216, 71, 184,
                                     104, 151));
}

}  // namespace astc_codec::test
