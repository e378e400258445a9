// SPDX-License-Identifier: GPL-3.0-or-later
// Light of bolts over a clip: a hot core, a coloured glow round it, and what both do to the scene.
#include "color.glsl"
#include "frame.glsl"
#include "noise.glsl"

// `hot` is how much of a place the bolts cover, `near` the same feathered, both 0..1.
vec3 BoltLight(float hot, float near, vec3 core, vec3 glow) {
    // The feather spreads a thin bolt over much room: what is left of it is brought back.
    float halo = 1.0 - exp(-5.0 * near);
    return core * min(hot + 0.6 * halo * halo, 1.0) + glow * halo;
}

// A ball of light about `center` (texture coordinates) with a restless edge; 0..1.
float BoltBall(vec2 uv, vec2 center, float radius) {
    vec2 p = (uv - center) * vec2(Aspect(), 1.0);
    float d = length(p);
    if (radius <= 0.0 || d > 4.0 * radius) return 0.0;
    float angle = atan(p.y, p.x);
    float edge = 0.8 + 0.4 * ValueNoise(vec2(3.0 * cos(angle), 3.0 * sin(angle) + 9.0 * global_time));
    float near = d / (radius * edge);
    return exp(-2.2 * near * near) + 0.25 * exp(-0.9 * near);
}

// Adds light to a clip that goes darker by `dim` where the light does not fall.
vec4 Lit(vec4 clip, vec3 light, float dim, float amount) {
    light = clamp(light * amount, 0.0, 1.0);
    clip.rgb *= 1.0 - dim * amount;
    float cover = max(light.r, max(light.g, light.b));
    return vec4(clip.rgb + light * (1.0 - clip.rgb), clip.a + cover * (1.0 - clip.a));
}
