// SPDX-License-Identifier: GPL-3.0-or-later
// The clip lies before the viewer as a land of lights: what is bright are its hills, and a swell runs
// through it.
#include "lattice.glsl"

uniform float amount;
uniform float swell;
uniform float likeness;  // to the clip's colours
uniform int color_r, color_g, color_b;

void main() {
    vDot = vec4(0.0, 0.0, 0.0, -1.0);
    vPixels = 0.0;
    if (IsBackdrop(texcoord)) return;
    vec2 uv = DotUv();
    vec4 clip = ClipRound(uv, HalfCell());
    float light = Luma(clip.rgb);
    vec2 p = ToHeightUnits(uv);
    float wave = sin(5.0 * p.y - 1.6 * global_time + 2.0 * sin(2.2 * p.x + 0.4 * global_time));
    float height = Z_Offset * light + 0.35 * swell * wave;
    // Crests catch the light, valleys lie in the chosen colour.
    vec3 tone = vec3(color_r, color_g, color_b) / 255.0;
    float crest = clamp(0.45 + 0.9 * (height - 0.1), 0.1, 1.2);
    vec3 land = mix(tone, vec3(1.0), 0.5 * light * light) * crest * (0.4 + 0.6 * light);
    vDot = vec4(min(1.35 * mix(land * clip.a, clip.rgb, likeness), vec3(clip.a)), clip.a);
    // Dots of the fore are as large on the picture as their nearness makes them.
    PutDot(uv, vec2(0.0), height, amount > 0.0 ? HalfStep() * uParticleSize : 0.0);
}
