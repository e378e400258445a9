// SPDX-License-Identifier: GPL-3.0-or-later
// A grain of glitter: a point with four thin rays, in gold and in the colour of its place.
#include "color.glsl"
#include "glow_dot.glsl"

uniform float amount;
uniform float likeness;  // how much of the clip's colour a grain has
uniform int color;

flat in vec4 vGrain;

void main() {
    if (vGrain.a < 0.0) {
        fragColor = Input0(vTexCoord);
        return;
    }
    vec2 p = 2.0 * vTexCoord - 1.0;
    float r = length(p);
    float fade = max(1.0 - r, 0.0);
    float rays = exp(-22.0 * abs(p.x)) + exp(-22.0 * abs(p.y));
    float light = smoothstep(0.2, 0.06, r) + 0.35 * fade * fade * fade + 0.8 * rays * fade * fade;
    vec3 own = vGrain.rgb / max(max(vGrain.r, max(vGrain.g, vGrain.b)), 0.05);
    vec3 tone = mix(UnpackColor(color), own, likeness);
    fragColor = LightOf(mix(tone, vec3(1.0), smoothstep(0.35, 0.1, r)) * light * vGrain.a) * amount;
}
