// SPDX-License-Identifier: GPL-3.0-or-later
// A bolt along each forearm, out of the frame.
#include "hand_bolts.glsl"

uniform int calLayer;  // 0 lays the bolts together, 1 shows them

void main() { fragColor = calLayer == 0 ? BoltLayer() : BoltsOverClip(HandBalls()); }
