// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace kelmo {

/// How far a crown of bolts turns on a frame, in degrees: faster and faster one way for a second,
/// then the other way.
float CrownTurn(int32_t position, float frameRate);

/// An end of a bolt that wanders there and back within two seconds, one step for each frame drawn.
class BoltWobble {
public:
    /// The offset of this frame, from 0 down to about -frameRate * `step` and back; then steps on.
    float Next(float frameRate, float step);

private:
    int32_t counter = 0;
};

}  // namespace kelmo
