// SPDX-License-Identifier: GPL-3.0-or-later
// The clip as dots: light ones are large and stand in front, and come together as the depth goes.
#include "lattice.glsl"

uniform float amount;
uniform float likeness;  // to the clip's colours
uniform int color_r, color_g, color_b;

void main() {
    vDot = vec4(0.0, 0.0, 0.0, -1.0);
    vPixels = 0.0;
    if (IsBackdrop(texcoord)) return;
    vec2 uv = DotUv();
    vec4 clip = ClipRound(uv, HalfCell());
    float light = Luma(clip.rgb);
    vec3 tone = vec3(color_r, color_g, color_b) / 255.0;
    vDot = vec4(mix(tone * (0.25 + light) * clip.a, clip.rgb, likeness), clip.a);
    // While there is depth each dot hovers about its place.
    float loose = clamp(abs(Z_Offset) - 0.12, 0.0, 1.0);
    float own = Hash(gl_VertexID / 6);
    vec2 hover = vec2(sin(global_time * (0.6 + own) + 40.0 * own), cos(global_time * (0.5 + own) + 70.0 * own));
    float size = HalfStep() * uParticleSize * mix(0.35, 1.15, sqrt(light));
    PutDot(uv, 0.12 * loose * hover, Z_Offset * (light - 0.5 + 0.5 * loose * (own - 0.5)), amount > 0.0 ? size : 0.0);
}
