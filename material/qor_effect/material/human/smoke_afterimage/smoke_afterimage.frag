// SPDX-License-Identifier: GPL-3.0-or-later
// Smoke rises from people and drifts apart.
#include "noise.glsl"
#include "trail.glsl"

uniform float amount;
uniform int color;
uniform float swirl;  // how far the air carries it sideways, in heights of the frame

void main() {
    vec4 clip = Input0(vTexCoord);
    vec2 p = ToHeightUnits(vTexCoord);
    vec2 air = p * 4.0 - vec2(0.0, 0.9 * Seconds());
    vec2 push = vec2(Fbm(air), Fbm(air + 41.0)) - 0.5;
    // Old smoke is carried further.
    float young = Trail(vTexCoord).a;
    vec2 uv = FromHeightUnits(p + push * swirl * 2.0 * (1.5 - young));
    float fresh = Trail(uv).a;
    float wisps = smoothstep(0.25, 0.75, Fbm(air * 1.7 + push * 3.0));
    float density = fresh * mix(wisps, 1.0, fresh * fresh) * 1.25;
    vec3 tone = UnpackColor(color) * mix(0.62, 1.0, wisps);
    fragColor = BehindPeople(clip, vec4(tone, 1.0) * (amount * clamp(density, 0.0, 0.9)));
}
