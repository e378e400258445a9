// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace astc_codec {

/// A block as one number of 128 bits, bit 0 the lowest bit of its first byte.
struct Bits128 {
    uint64_t low = 0;
    uint64_t high = 0;

    static Bits128 FromBytes(const uint8_t* bytes);
    /// Bit i is bit 127 - i of the block: weights run downwards from its top.
    static Bits128 FromBytesReversed(const uint8_t* bytes);

    /// `count` bits (1..32) from bit `position` up; all of them inside the 128.
    uint32_t Field(unsigned position, unsigned count) const {
        return static_cast<uint32_t>(DroppedBy(position).low & ((uint64_t{1} << count) - 1));
    }
    /// The same number without its lowest `count` bits (0..127).
    Bits128 DroppedBy(unsigned count) const {
        if (count >= 64) return {high >> (count - 64), 0};
        if (count == 0) return *this;
        return {(low >> count) | (high << (64 - count)), high >> count};
    }
    /// The lowest `count` bits (1..63), which are taken away.
    uint64_t Take(unsigned count) {
        const uint64_t taken = low & ((uint64_t{1} << count) - 1);
        low = (low >> count) | (high << (64 - count));
        high >>= count;
        return taken;
    }
};

inline uint64_t LoadLittleEndian64(const uint8_t* bytes) {
    uint64_t value = 0;
    for (int i = 7; i >= 0; --i) value = (value << 8) | bytes[i];
    return value;
}

inline uint64_t LoadReversed64(const uint8_t* bytes) {
    uint64_t value = 0;
    for (int i = 0; i < 8; ++i) value = (value << 8) | bytes[i];
    constexpr uint64_t kOnes = 0x5555555555555555;
    constexpr uint64_t kPairs = 0x3333333333333333;
    constexpr uint64_t kNibbles = 0x0F0F0F0F0F0F0F0F;
    value = ((value >> 1) & kOnes) | ((value & kOnes) << 1);
    value = ((value >> 2) & kPairs) | ((value & kPairs) << 2);
    return ((value >> 4) & kNibbles) | ((value & kNibbles) << 4);
}

inline Bits128 Bits128::FromBytes(const uint8_t* bytes) {
    return {LoadLittleEndian64(bytes), LoadLittleEndian64(bytes + 8)};
}

inline Bits128 Bits128::FromBytesReversed(const uint8_t* bytes) {
    return {LoadReversed64(bytes + 8), LoadReversed64(bytes)};
}

}  // namespace astc_codec
