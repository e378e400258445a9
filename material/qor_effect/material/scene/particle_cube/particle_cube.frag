// SPDX-License-Identifier: GPL-3.0-or-later
#include "glow_dot.glsl"

flat in vec3 vLight;

void main() { fragColor = LightOf(vLight * GlowDot(2.0 * vTexCoord - 1.0, 0.4)); }
