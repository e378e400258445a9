// SPDX-License-Identifier: GPL-3.0-or-later
// Glowing embers: white-hot when they are young, of the chosen colour later.
#include "color.glsl"
#include "glow_dot.glsl"

uniform float amount;
uniform int color;

in float vHeat;

void main() {
    if (vHeat < 0.0) {
        fragColor = Input0(vTexCoord);
        return;
    }
    float light = GlowDot(2.0 * vTexCoord - 1.0, 0.28);
    vec3 tone = UnpackColor(color);
    vec3 hot = mix(tone, vec3(1.0, 0.92, 0.7), 0.75 * vHeat * vHeat * min(light, 1.0));
    fragColor = LightOf(hot * light) * amount;
}
