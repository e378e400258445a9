// SPDX-License-Identifier: GPL-3.0-or-later
// Flames that stand on the outline.
#include "edge_flow.glsl"

void main() {
    fragColor = Shown(FireColor(Flames(0.17, 11.0, 0.6)));
}
