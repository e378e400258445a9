// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "framework/astc/astc_integer_sequence.h"

/// The ranges in which weights and colour values are stored, and what their stored values mean.
namespace astc_codec {

inline constexpr int kWeightRanges = 12;
inline constexpr int kColorRanges = 17;

/// Weight ranges from 2 to 32 levels.
IntegerRange WeightRange(int index);
/// Weight of 0..64 for each stored value of a range.
const uint8_t* WeightValues(int index);

/// Colour ranges from 256 down to 6 levels.
IntegerRange ColorRange(int index);
/// Colour value of 0..255 for each stored value of a range.
const uint8_t* ColorValues(int index);
/// The range of the most levels with which `count` values (2..18, even) fit into `bits`; -1 when
/// not even 6 levels do.
int ColorRangeFor(int count, int bits);

}  // namespace astc_codec
