// SPDX-License-Identifier: GPL-3.0-or-later
#include "framework/astc/astc_integer_sequence.h"

#include <array>
#include <utility>

namespace astc_codec {

namespace {

constexpr int kMaxTritBits = 6;
constexpr int kMaxQuintBits = 5;
constexpr int kMaxPlainBits = 8;

constexpr unsigned Bit(unsigned value, unsigned index) {
    return (value >> index) & 1U;
}

/// Five digits of two bits each, the first one lowest.
constexpr uint16_t UnpackTrits(unsigned t) {
    unsigned digit[5] = {};
    unsigned c = t & 31U;
    if (((t >> 2) & 7U) == 7U) {
        digit[4] = digit[3] = 2;
        c = (((t >> 5) & 7U) << 2) | (t & 3U);
    } else if (((t >> 5) & 3U) == 3U) {
        digit[4] = 2;
        digit[3] = Bit(t, 7);
    } else {
        digit[4] = Bit(t, 7);
        digit[3] = (t >> 5) & 3U;
    }
    if ((c & 3U) == 3U) {
        digit[2] = 2;
        digit[1] = Bit(c, 4);
        digit[0] = (Bit(c, 3) << 1) | (Bit(c, 2) & ~Bit(c, 3) & 1U);
    } else if (((c >> 2) & 3U) == 3U) {
        digit[2] = digit[1] = 2;
        digit[0] = c & 3U;
    } else {
        digit[2] = Bit(c, 4);
        digit[1] = (c >> 2) & 3U;
        digit[0] = (Bit(c, 1) << 1) | (Bit(c, 0) & ~Bit(c, 1) & 1U);
    }
    unsigned packed = 0;
    for (int i = 4; i >= 0; --i) packed = (packed << 2) | digit[i];
    return static_cast<uint16_t>(packed);
}

/// Three digits of three bits each, the first one lowest.
constexpr uint16_t UnpackQuints(unsigned q) {
    unsigned digit[3] = {};
    if (((q >> 1) & 3U) == 3U && ((q >> 5) & 3U) == 0U) {
        digit[0] = digit[1] = 4;
        const unsigned clear = ~Bit(q, 0) & 1U;
        digit[2] = (Bit(q, 0) << 2) | ((Bit(q, 4) & clear) << 1) | (Bit(q, 3) & clear);
    } else {
        unsigned c = q & 31U;
        if (((q >> 1) & 3U) == 3U) {
            digit[2] = 4;
            c = (((q >> 3) & 3U) << 3) | ((~(q >> 5) & 3U) << 1) | Bit(q, 0);
        } else {
            digit[2] = (q >> 5) & 3U;
        }
        if ((c & 7U) == 5U) {
            digit[1] = 4;
            digit[0] = (c >> 3) & 3U;
        } else {
            digit[1] = (c >> 3) & 3U;
            digit[0] = c & 7U;
        }
    }
    return static_cast<uint16_t>(digit[0] | (digit[1] << 3) | (digit[2] << 6));
}

template <std::size_t size, typename Unpack>
constexpr std::array<uint16_t, size> DigitTable(Unpack unpack) {
    std::array<uint16_t, size> table{};
    for (std::size_t i = 0; i < size; ++i) table[i] = unpack(static_cast<unsigned>(i));
    return table;
}

constexpr auto kTrits = DigitTable<256>(UnpackTrits);
constexpr auto kQuints = DigitTable<128>(UnpackQuints);

using Decoder = void (*)(Bits128, int, const uint8_t*, uint8_t*);

template <unsigned bits>
void DecodePlain(Bits128 stream, int count, const uint8_t* map, uint8_t* output) {
    for (int i = 0; i < count; ++i) output[i] = map[stream.Take(bits)];
}

// The fields of a group, from its lowest bit: low part of a value, then some bits of the shared
// number, and so on. Constant shifts: the width of the low part is a template argument.

template <unsigned bits>
void DecodeTritGroup(uint64_t group, const uint8_t* map, uint8_t* output) {
    constexpr unsigned kMask = (1U << bits) - 1;
    const auto low = [group](unsigned position) {
        return static_cast<unsigned>(group >> position) & kMask;
    };
    const auto t = static_cast<unsigned>(
        ((group >> bits) & 3) | (((group >> (2 * bits + 2)) & 3) << 2) |
        (((group >> (3 * bits + 4)) & 1) << 4) | (((group >> (4 * bits + 5)) & 3) << 5) |
        (((group >> (5 * bits + 7)) & 1) << 7));
    const unsigned digits = kTrits[t];
    output[0] = map[((digits & 3U) << bits) | low(0)];
    output[1] = map[(((digits >> 2) & 3U) << bits) | low(bits + 2)];
    output[2] = map[(((digits >> 4) & 3U) << bits) | low(2 * bits + 4)];
    output[3] = map[(((digits >> 6) & 3U) << bits) | low(3 * bits + 5)];
    output[4] = map[((digits >> 8) << bits) | low(4 * bits + 7)];
}

template <unsigned bits>
void DecodeQuintGroup(uint64_t group, const uint8_t* map, uint8_t* output) {
    constexpr unsigned kMask = (1U << bits) - 1;
    const auto low = [group](unsigned position) {
        return static_cast<unsigned>(group >> position) & kMask;
    };
    const auto q =
        static_cast<unsigned>(((group >> bits) & 7) | (((group >> (2 * bits + 3)) & 3) << 3) |
                              (((group >> (3 * bits + 5)) & 3) << 5));
    const unsigned digits = kQuints[q];
    output[0] = map[((digits & 7U) << bits) | low(0)];
    output[1] = map[(((digits >> 3) & 7U) << bits) | low(bits + 3)];
    output[2] = map[((digits >> 6) << bits) | low(2 * bits + 5)];
}

// A last group that is not full ends with the shared bits of its last value; taking no more than
// those bits leaves the missing ones zero.

template <unsigned bits>
void DecodeTrits(Bits128 stream, int count, const uint8_t* map, uint8_t* output) {
    constexpr IntegerRange kRange{HighDigit::kTrit, bits};
    for (; count >= 5; count -= 5, output += 5) {
        DecodeTritGroup<bits>(stream.Take(5 * bits + 8), map, output);
    }
    if (count == 0) return;
    const auto rest = static_cast<unsigned>(kRange.SequenceBits(count));
    DecodeTritGroup<bits>(stream.Take(rest), map, output);
}

template <unsigned bits>
void DecodeQuints(Bits128 stream, int count, const uint8_t* map, uint8_t* output) {
    constexpr IntegerRange kRange{HighDigit::kQuint, bits};
    for (; count >= 3; count -= 3, output += 3) {
        DecodeQuintGroup<bits>(stream.Take(3 * bits + 7), map, output);
    }
    if (count == 0) return;
    const auto rest = static_cast<unsigned>(kRange.SequenceBits(count));
    DecodeQuintGroup<bits>(stream.Take(rest), map, output);
}

template <std::size_t... bits>
constexpr auto PlainDecoders(std::index_sequence<bits...>) {
    return std::array<Decoder, sizeof...(bits)>{DecodePlain<bits + 1>...};
}
template <std::size_t... bits>
constexpr auto TritDecoders(std::index_sequence<bits...>) {
    return std::array<Decoder, sizeof...(bits)>{DecodeTrits<bits>...};
}
template <std::size_t... bits>
constexpr auto QuintDecoders(std::index_sequence<bits...>) {
    return std::array<Decoder, sizeof...(bits)>{DecodeQuints<bits>...};
}

constexpr auto kPlainDecoders = PlainDecoders(std::make_index_sequence<kMaxPlainBits>());
constexpr auto kTritDecoders = TritDecoders(std::make_index_sequence<kMaxTritBits + 1>());
constexpr auto kQuintDecoders = QuintDecoders(std::make_index_sequence<kMaxQuintBits + 1>());

}  // namespace

void DecodeSequence(IntegerRange range, Bits128 stream, int count, const uint8_t* map,
                    uint8_t* output) {
    switch (range.high) {
        case HighDigit::kNone:
            kPlainDecoders[range.bits - 1U](stream, count, map, output);
            break;
        case HighDigit::kTrit:
            kTritDecoders[range.bits](stream, count, map, output);
            break;
        case HighDigit::kQuint:
            kQuintDecoders[range.bits](stream, count, map, output);
            break;
    }
}

}  // namespace astc_codec
