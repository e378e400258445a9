// SPDX-License-Identifier: GPL-3.0-or-later
// Fire: how its air moves, its tongues, its colours. Places in heights of the frame.
#include "noise.glsl"

// Where the picture of the fire comes from, seen from a place; `reach` 1 is a tongue's usual length.
vec2 FlamePush(vec2 p, float seconds, float reach) {
    vec2 air = p * vec2(9.0, 5.0) - vec2(0.0, 3.2 * seconds);
    float side = Fbm(air) - 0.5;
    float lick = Fbm(air * 1.4 + 23.0);
    return vec2(0.10 * side, -0.11 * lick) * reach;
}

// 0..1 and above: how strongly it burns at a place.
float FlameTongues(vec2 p, float seconds) {
    return 0.35 + 1.15 * Fbm(p * vec2(13.0, 7.0) - vec2(0.0, 4.4 * seconds));
}

// Premultiplied light of a heat, 0..1.
vec4 FlameColor(float heat, vec3 edge, vec3 heart) {
    float h = clamp(heat, 0.0, 1.0);
    vec3 tone = mix(edge, heart, smoothstep(0.35, 0.85, h));
    vec3 light = tone * smoothstep(0.05, 0.55, h);
    return vec4(light, max(light.r, max(light.g, light.b)));
}
