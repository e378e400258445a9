// SPDX-License-Identifier: GPL-3.0-or-later
#include "framework/astc/astc_endpoints.h"

#include <algorithm>

namespace astc_codec {

namespace {

constexpr int kOpaque = 255;

/// A colour before it is clamped: R, G, B, A.
using Color = std::array<int, 4>;

std::array<uint8_t, 4> Clamped(const Color& color) {
    std::array<uint8_t, 4> bytes{};
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        bytes[i] = static_cast<uint8_t>(std::clamp(color[i], 0, 255));
    }
    return bytes;
}

Endpoints Ends(const Color& first, const Color& second) {
    return {Clamped(first), Clamped(second)};
}

Color Grey(int level, int alpha = kOpaque) {
    return {level, level, level, alpha};
}

/// Blue contraction: red and green are stored as their distance from blue where that is finer.
Color Contracted(const Color& c) {
    return {(c[0] + c[2]) >> 1, (c[1] + c[2]) >> 1, c[2], c[3]};
}

/// The values of base + offset modes: the offset lends its top bit to the base and keeps a signed
/// number of six bits.
struct BaseOffset {
    int base;
    int offset;

    BaseOffset(int storedBase, int storedOffset)
        : base((storedBase >> 1) | (storedOffset & 0x80)), offset((storedOffset >> 1) & 0x3F) {
        if (offset >= 32) offset -= 64;
    }
    int Sum() const { return base + offset; }
};

Endpoints GreyWithOffset(const uint8_t* v) {
    const int low = (v[0] >> 2) | (v[1] & 0xC0);
    return Ends(Grey(low), Grey(low + (v[1] & 0x3F)));
}

Endpoints GreyAlphaWithOffset(const uint8_t* v) {
    const BaseOffset grey(v[0], v[1]);
    const BaseOffset alpha(v[2], v[3]);
    return Ends(Grey(grey.base, alpha.base), Grey(grey.Sum(), alpha.Sum()));
}

Endpoints Scaled(const uint8_t* v, int firstAlpha, int secondAlpha) {
    return Ends({v[0] * v[3] >> 8, v[1] * v[3] >> 8, v[2] * v[3] >> 8, firstAlpha},
                {v[0], v[1], v[2], secondAlpha});
}

Endpoints Direct(const uint8_t* v, int firstAlpha, int secondAlpha) {
    const Color first{v[0], v[2], v[4], firstAlpha};
    const Color second{v[1], v[3], v[5], secondAlpha};
    const bool ordered = v[1] + v[3] + v[5] >= v[0] + v[2] + v[4];
    return ordered ? Ends(first, second) : Ends(Contracted(second), Contracted(first));
}

Endpoints WithOffset(const uint8_t* v, int firstAlpha, int secondAlpha) {
    const BaseOffset red(v[0], v[1]);
    const BaseOffset green(v[2], v[3]);
    const BaseOffset blue(v[4], v[5]);
    const Color first{red.base, green.base, blue.base, firstAlpha};
    const Color second{red.Sum(), green.Sum(), blue.Sum(), secondAlpha};
    const bool ordered = red.offset + green.offset + blue.offset >= 0;
    return ordered ? Ends(first, second) : Ends(Contracted(second), Contracted(first));
}

}  // namespace

Endpoints DecodeEndpoints(unsigned mode, const uint8_t* v) {
    switch (mode) {
        case 0:
            return Ends(Grey(v[0]), Grey(v[1]));
        case 1:
            return GreyWithOffset(v);
        case 4:
            return Ends(Grey(v[0], v[2]), Grey(v[1], v[3]));
        case 5:
            return GreyAlphaWithOffset(v);
        case 6:
            return Scaled(v, kOpaque, kOpaque);
        case 8:
            return Direct(v, kOpaque, kOpaque);
        case 9:
            return WithOffset(v, kOpaque, kOpaque);
        case 10:
            return Scaled(v, v[4], v[5]);
        case 12:
            return Direct(v, v[6], v[7]);
        case 13: {
            const BaseOffset alpha(v[6], v[7]);
            return WithOffset(v, alpha.base, alpha.Sum());
        }
        default:
            return {};
    }
}

}  // namespace astc_codec
