// SPDX-License-Identifier: GPL-3.0-or-later
// A tube: bent glass, lines, three phosphors, snow. Slot 1 holds the snow.
#include "color.glsl"
#include "frame.glsl"
#include "noise.glsl"

uniform int strength;

void main() {
    float s = float(strength) / 100.0;
    vec2 p = ToHeightUnits(vTexCoord);
    vec2 bent = p * (1.0 + 0.09 * s * dot(p, p));
    vec2 uv = FromHeightUnits(bent);
    float roll = smoothstep(0.0, 0.08, fract(uv.y + global_time * 0.13)) *
                 smoothstep(0.35, 0.08, fract(uv.y + global_time * 0.13));
    uv.x += s * (0.0025 * sin(uv.y * 90.0 + global_time * 9.0) * roll + 0.0015 * (Hash(int(uv.y * 240.0) + int(global_time * 25.0) * 311) - 0.5));
    float shift = 0.0018 * s;
    vec4 mid = Input0(uv);
    vec3 rgb = vec3(Straight(Input0(uv + vec2(shift, 0.0))).r, Straight(mid).g,
                    Straight(Input0(uv - vec2(shift, 0.0))).b);
    rgb = mix(rgb, pow(max(rgb, 0.0), vec3(0.85)) * vec3(0.92, 1.04, 0.98) * 1.1, s);
    float snow = Input1(uv * vec2(Aspect(), 1.0) * 1.6).r - 0.5;
    rgb += snow * 0.34 * s;
    // Lines and phosphors need pixels to show; where there are too few they would beat against them.
    float lineRoom = smoothstep(240.0, 480.0, uResolution.y);
    float lines = 0.5 + 0.5 * cos(uv.y * 6.2831853 * 240.0);
    rgb *= 1.0 - 0.4 * s * mix(0.5, lines, lineRoom);
    float stripe = fract(uv.x * Aspect() * 160.0);
    vec3 phosphor = vec3(stripe < 0.333, stripe >= 0.333 && stripe < 0.667, stripe >= 0.667) * 0.5 + 0.75;
    rgb *= mix(vec3(1.0), mix(vec3(0.917), phosphor, smoothstep(320.0, 640.0, uResolution.y)), 0.5 * s);
    rgb *= 1.0 + 0.12 * s * roll;
    rgb *= 1.0 - 0.5 * s * smoothstep(0.4, 1.05, length(p));
    fragColor = Premultiplied(rgb * Inside(uv), mid.a);
}
