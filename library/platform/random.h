// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

/// Random numbers of the effects.
///
/// Each thread has a state of its own, so that a frame that seeds and then draws gives the same
/// picture whatever other threads draw meanwhile. A thread that never seeds starts as if seeded
/// with 1. The same seed gives the same numbers on every machine.
namespace kelmo {

/// Largest number that `Rand` gives: 2^31 - 1, so that `Rand() % n` stays fair for every n that an
/// effect uses (a 15-bit range would make `% 10000` visibly lumpy).
inline constexpr int32_t kRandMax = 0x7fffffff;

/// Starts the calling thread's sequence anew.
void Srand(uint32_t seed);

/// Next number of the calling thread, 0..kRandMax, evenly spread. SplitMix64: Steele, Lea, Flood,
/// "Fast Splittable Pseudorandom Number Generators", 2014. Its low bits are as good as its high
/// ones, which the customary `Rand() % n` needs, and neighbouring seeds (frame numbers) give
/// unrelated sequences.
int32_t Rand();

}  // namespace kelmo
