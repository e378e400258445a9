// SPDX-License-Identifier: GPL-3.0-or-later
#include "framework/astc/astc_quantization.h"

#include <array>

namespace astc_codec {

namespace {

constexpr HighDigit kNone = HighDigit::kNone;
constexpr HighDigit kTrit = HighDigit::kTrit;
constexpr HighDigit kQuint = HighDigit::kQuint;

constexpr std::array<IntegerRange, kWeightRanges> kWeights{{
    {kNone, 1},
    {kTrit, 0},
    {kNone, 2},
    {kQuint, 0},
    {kTrit, 1},
    {kNone, 3},
    {kQuint, 1},
    {kTrit, 2},
    {kNone, 4},
    {kQuint, 2},
    {kTrit, 3},
    {kNone, 5},
}};

constexpr std::array<IntegerRange, kColorRanges> kColors{{
    {kNone, 8},
    {kTrit, 6},
    {kQuint, 5},
    {kNone, 7},
    {kTrit, 5},
    {kQuint, 4},
    {kNone, 6},
    {kTrit, 4},
    {kQuint, 3},
    {kNone, 5},
    {kTrit, 3},
    {kQuint, 2},
    {kNone, 4},
    {kTrit, 2},
    {kQuint, 1},
    {kNone, 3},
    {kTrit, 1},
}};

constexpr int kMaxColorValues = 18;
constexpr int kMaxColorBits = 128;

/// Repeats `bits` bits from the top until `width` bits are full.
constexpr int Replicate(int value, int bits, int width) {
    int result = 0;
    for (int filled = 0; filled < width; filled += bits) {
        const int shift = width - filled - bits;
        result |= shift >= 0 ? value << shift : value >> -shift;
    }
    return result;
}

/// Values with a high digit D: (D * C + B) with the lowest bit a of the low part as a mirror; B
/// comes from the other low bits x, C from the levels.
constexpr int Mirrored(int digit, int scale, int offset, bool mirror, int width) {
    const int ones = mirror ? (1 << (width + 1)) - 1 : 0;
    const int value = (digit * scale + offset) ^ ones;
    return (ones & (1 << (width - 1))) | (value >> 2);
}

constexpr int WeightScale(int levels) {
    switch (levels) {
        case 6:
            return 50;
        case 10:
            return 28;
        case 12:
            return 23;
        case 20:
            return 13;
        default:
            return 11;
    }
}

constexpr int WeightOffset(int levels, int x) {
    switch (levels) {
        case 12:
            return 69 * x;
        case 20:
            return 66 * x;
        case 24:
            return 33 * x;
        default:
            return 0;
    }
}

constexpr uint8_t WeightValue(IntegerRange range, int stored) {
    constexpr int kThree[] = {0, 32, 63};
    constexpr int kFive[] = {0, 16, 32, 47, 63};
    int value = 0;
    if (range.high == kNone) {
        value = Replicate(stored, range.bits, 6);
    } else if (range.bits == 0) {
        value = range.high == kTrit ? kThree[stored] : kFive[stored];
    } else {
        const int low = stored & ((1 << range.bits) - 1);
        const int levels = range.Levels();
        value = Mirrored(stored >> range.bits, WeightScale(levels), WeightOffset(levels, low >> 1),
                         (low & 1) != 0, 6);
    }
    // 63 steps become 64, so that a blend can divide by a power of two.
    return static_cast<uint8_t>(value > 32 ? value + 1 : value);
}

constexpr int ColorScale(int levels) {
    switch (levels) {
        case 6:
            return 204;
        case 10:
            return 113;
        case 12:
            return 93;
        case 20:
            return 54;
        case 24:
            return 44;
        case 40:
            return 26;
        case 48:
            return 22;
        case 80:
            return 13;
        case 96:
            return 11;
        case 160:
            return 6;
        default:
            return 5;
    }
}

constexpr int ColorOffset(int levels, int x) {
    switch (levels) {
        case 12:
            return 278 * x;
        case 20:
            return 268 * x;
        case 24:
            return 133 * x;
        case 40:
            return (x << 7) + (x << 1) + (x >> 1);
        case 48:
            return 65 * x;
        case 80:
            return (x << 6) + (x >> 1);
        case 96:
            return (x << 5) + (x >> 2);
        case 160:
            return (x << 5) + (x >> 3);
        case 192:
            return (x << 4) + (x >> 4);
        default:
            return 0;
    }
}

constexpr uint8_t ColorValue(IntegerRange range, int stored) {
    if (range.high == kNone) return static_cast<uint8_t>(Replicate(stored, range.bits, 8));
    const int low = stored & ((1 << range.bits) - 1);
    const int levels = range.Levels();
    return static_cast<uint8_t>(Mirrored(stored >> range.bits, ColorScale(levels),
                                         ColorOffset(levels, low >> 1), (low & 1) != 0, 8));
}

constexpr auto BuildWeightValues() {
    std::array<std::array<uint8_t, 32>, kWeightRanges> table{};
    for (std::size_t i = 0; i < table.size(); ++i) {
        for (int value = 0; value < kWeights[i].Levels(); ++value) {
            table[i][static_cast<std::size_t>(value)] = WeightValue(kWeights[i], value);
        }
    }
    return table;
}

constexpr auto BuildColorValues() {
    std::array<std::array<uint8_t, 256>, kColorRanges> table{};
    for (std::size_t i = 0; i < table.size(); ++i) {
        for (int value = 0; value < kColors[i].Levels(); ++value) {
            table[i][static_cast<std::size_t>(value)] = ColorValue(kColors[i], value);
        }
    }
    return table;
}

constexpr auto BuildColorRanges() {
    std::array<std::array<int8_t, kMaxColorBits>, kMaxColorValues / 2 + 1> table{};
    for (std::size_t pairs = 0; pairs < table.size(); ++pairs) {
        for (int bits = 0; bits < kMaxColorBits; ++bits) {
            int8_t best = -1;
            for (int i = kColorRanges - 1; i >= 0; --i) {
                const IntegerRange range = kColors[static_cast<std::size_t>(i)];
                if (range.SequenceBits(static_cast<int>(pairs) * 2) <= bits) {
                    best = static_cast<int8_t>(i);
                }
            }
            table[pairs][static_cast<std::size_t>(bits)] = best;
        }
    }
    return table;
}

constexpr auto kWeightValues = BuildWeightValues();
constexpr auto kColorValues = BuildColorValues();
constexpr auto kColorRangeByBits = BuildColorRanges();

}  // namespace

IntegerRange WeightRange(int index) {
    return kWeights[static_cast<std::size_t>(index)];
}

const uint8_t* WeightValues(int index) {
    return kWeightValues[static_cast<std::size_t>(index)].data();
}

IntegerRange ColorRange(int index) {
    return kColors[static_cast<std::size_t>(index)];
}

const uint8_t* ColorValues(int index) {
    return kColorValues[static_cast<std::size_t>(index)].data();
}

int ColorRangeFor(int count, int bits) {
    if (bits < 0 || bits >= kMaxColorBits || count < 2 || count > kMaxColorValues) return -1;
    return kColorRangeByBits[static_cast<std::size_t>(count / 2)][static_cast<std::size_t>(bits)];
}

}  // namespace astc_codec
