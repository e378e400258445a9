// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "framework/astc/astc_bits.h"

/// Integer sequences: how weights and colour values of few levels are packed. A value is
/// high * 2^bits + low, with the high part a trit (0..2), a quint (0..4) or none; five trits share
/// 8 bits of the stream, three quints 7.
namespace astc_codec {

enum class HighDigit : uint8_t { kNone, kTrit, kQuint };

struct IntegerRange {
    HighDigit high = HighDigit::kNone;
    uint8_t bits = 0;

    constexpr int Levels() const {
        const int digits = high == HighDigit::kTrit ? 3 : high == HighDigit::kQuint ? 5 : 1;
        return digits << bits;
    }
    /// Bits that a sequence of `count` values takes.
    constexpr int SequenceBits(int count) const {
        const int low = count * bits;
        if (high == HighDigit::kTrit) return low + (8 * count + 4) / 5;
        if (high == HighDigit::kQuint) return low + (7 * count + 2) / 3;
        return low;
    }
};

/// Values are decoded in whole groups: the output has room for this many behind the last one.
inline constexpr int kSequencePadding = 4;

/// Decodes `count` values from the low end of `stream` and replaces each by `map[value]`. What lies
/// in `stream` behind the sequence is not looked at. `output` has room for count +
/// kSequencePadding.
void DecodeSequence(IntegerRange range, Bits128 stream, int count, const uint8_t* map,
                    uint8_t* output);

}  // namespace astc_codec
