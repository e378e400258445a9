// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>

namespace astc_codec {

/// The two ends of a partition's colours: R, G, B, A of 0..255.
struct Endpoints {
    std::array<uint8_t, 4> first{};
    std::array<uint8_t, 4> second{};
};

/// Number of stored values of an endpoint mode (0..15).
constexpr int EndpointValues(unsigned mode) {
    return 2 * (static_cast<int>(mode >> 2) + 1);
}

/// Modes of high dynamic range, which an 8-bit picture cannot show.
constexpr bool IsHighRange(unsigned mode) {
    return mode == 2 || mode == 3 || mode == 7 || mode == 11 || mode >= 14;
}

/// Endpoints of a mode that is not of high range from its EndpointValues(mode) values of 0..255.
Endpoints DecodeEndpoints(unsigned mode, const uint8_t* values);

}  // namespace astc_codec
