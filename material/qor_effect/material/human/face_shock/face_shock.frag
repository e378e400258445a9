// SPDX-License-Identifier: GPL-3.0-or-later
// Shock waves burst from a face: they bend and part the colours of the clip and carry a faint light.
#include "color.glsl"
#include "frame.glsl"

uniform float amount;
uniform float bend;  // heights of the frame
uniform int color;
uniform vec2 uCenter;  // of the face, y down

// Strength of the wave; the card was placed with y down.
float Wave(vec2 uv) { return Input1(FlipV(uv)).a; }

void main() {
    vec4 clip = Input0(vTexCoord);
    float wave = Wave(vTexCoord) * amount;
    vec2 unit = vec2(1.0 / Aspect(), 1.0);
    vec2 from = ToHeightUnits(vTexCoord) - ToHeightUnits(FlipV(uCenter));
    vec2 away = dot(from, from) > 1e-8 ? normalize(from) : vec2(0.0);
    vec2 shift = away * unit * bend * wave;
    vec4 bent = Input0(vTexCoord - shift);
    bent.r = Input0(vTexCoord - 1.25 * shift).r;
    bent.b = Input0(vTexCoord - 0.75 * shift).b;
    bent.a = max(bent.a, max(bent.r, bent.b));
    vec3 light = UnpackColor(color) * 0.35 * wave * wave;
    vec4 lit = vec4(bent.rgb + light * (bent.a - bent.rgb), bent.a);
    fragColor = mix(clip, lit, smoothstep(0.0, 0.05, wave));
}
