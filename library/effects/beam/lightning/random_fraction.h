// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "platform/random.h"

namespace kelmo {

/// One of `steps` evenly spaced numbers from 0 up to, but not including, 1.
inline float RandomFraction(int32_t steps) {
    return static_cast<float>(Rand() % steps) / static_cast<float>(steps);
}

/// The same about 0: from -0.5 on.
inline float RandomOffset(int32_t steps) {
    return RandomFraction(steps) - 0.5F;
}

}  // namespace kelmo
