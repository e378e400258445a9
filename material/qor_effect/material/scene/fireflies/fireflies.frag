// SPDX-License-Identifier: GPL-3.0-or-later
// The clip at dusk, and small warm lights with a wide glow.
#include "color.glsl"
#include "glow_dot.glsl"

uniform float amount;
uniform float dusk;  // how much darker and bluer the clip gets
uniform int color;

flat in float vLight;

void main() {
    if (vLight < 0.0) {
        vec4 clip = Input0(vTexCoord);
        fragColor = vec4(clip.rgb * mix(vec3(1.0), vec3(0.35, 0.45, 0.68), dusk * amount), clip.a);
        return;
    }
    float light = GlowDot(2.0 * vTexCoord - 1.0, 0.10) * vLight;
    vec3 tone = UnpackColor(color);
    fragColor = LightOf(mix(tone, vec3(1.0), 0.6 * smoothstep(0.6, 1.4, light)) * light) * amount;
}
