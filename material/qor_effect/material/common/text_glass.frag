// SPDX-License-Identifier: GPL-3.0-or-later
// Letters that one looks through: glass, ice, a hologram.
#include "text_light.glsl"

uniform int face_color;
uniform int side_color;
uniform int clear_kind;    // 0 glass, 1 ice, 2 hologram
uniform float clearness;   // how much of the clip comes through
uniform float roughness;
uniform float dome;

void main() {
    vec3 n = Normal(dome);
    vec2 p = vWorld.xy;
    vec3 tint = UnpackColor(IsFace() ? face_color : side_color);
    vec3 eye = ToEye();
    if (clear_kind == 2) {
        float rim = pow(1.0 - abs(dot(n, eye)), 1.5);
        float lines = 0.6 + 0.4 * sin(p.y * 260.0 - 6.0 * global_time);
        float bar = exp(-30.0 * pow(fract(0.5 * p.y + 0.5 + 0.3 * global_time) - 0.5, 2.0));
        float flicker = 0.92 + 0.08 * Hash(int(floor(global_time * 20.0)));
        float strength = (0.55 + 1.1 * rim + (IsFace() ? 0.0 : 0.45) + 0.35 * bar) * lines * flicker * light;
        vec3 shine = tint * strength;
        float cover = clamp(strength, 0.0, 0.95);
        fragColor = Shown(shine / max(cover, 0.05), vec3(0.0), cover);
        return;
    }
    float frost = 0.0;
    if (clear_kind == 1) {
        float crack = smoothstep(0.035, 0.0, abs(Fbm(p * 4.0 + 3.0) - 0.5)) + 0.6 * smoothstep(0.03, 0.0, abs(Fbm(p * 9.0) - 0.5));
        frost = clamp(0.25 + 0.6 * crack + 0.35 * Fbm(p * 30.0), 0.0, 1.0);
        n = normalize(n + 0.45 * vec3(Fbm(p * 11.0) - 0.5, Fbm(p * 11.0 + 40.0) - 0.5, 0.0));
    }
    float facing = abs(dot(n, eye));
    float fresnel = 0.06 + 0.94 * pow(1.0 - facing, 4.0);
    // Whoever lays the letters over a picture sees it through them, except where they shine or are frosted.
    float veil = mix(1.0 - clearness, 0.85, frost) + 0.5 * (1.0 - facing);
    vec3 body = tint * (0.5 + 0.7 * Developed(Studio(n, 0.8)));
    vec3 mirror = Developed(Studio(reflect(-eye, n), roughness) * (fresnel + 0.05)) * Contact();
    float cover = clamp(max(veil, max(mirror.r, max(mirror.g, mirror.b))), 0.0, 1.0);
    vec3 color = min(body * veil + mirror, vec3(cover));
    fragColor = Shown(color / max(cover, 0.001), vec3(0.0), cover);
}
