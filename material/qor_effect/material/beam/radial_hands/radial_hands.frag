// SPDX-License-Identifier: GPL-3.0-or-later
// A crown of bolts round each hand.
#include "hand_bolts.glsl"

void main() { fragColor = BoltsOverClip(HandBalls()); }
