// SPDX-License-Identifier: GPL-3.0-or-later
// A coloured background becomes transparent; its light is taken out of what stays.
#include "color.glsl"
#include "frame.glsl"

uniform int key;
uniform float range;     // difference of colour that still is background
uniform float softness;  // how gently it ends
uniform float spill;     // how much of the key's light is taken away
uniform float edge;      // pulls the border inwards
uniform float amount;

vec2 Chroma(vec3 c) {
    return vec2(dot(c, vec3(-0.1146, -0.3854, 0.5)), dot(c, vec3(0.5, -0.4542, -0.0458)));
}

float Stays(vec2 uv, vec2 wanted, float strength) {
    vec2 own = Chroma(Straight(Input0(uv)));
    float away = length(own - wanted) / strength;
    return smoothstep(range, range + softness + 0.02, away);
}

void main() {
    vec4 c = Input0(vTexCoord);
    vec3 rgb = Straight(c);
    vec3 screen = UnpackColor(key);
    vec2 wanted = Chroma(screen);
    float strength = max(length(wanted), 0.05) * 1.6;
    vec2 d = 0.0016 / vec2(Aspect(), 1.0);
    float own = Stays(vTexCoord, wanted, strength);
    float least = min(min(Stays(vTexCoord + vec2(d.x, 0.0), wanted, strength), Stays(vTexCoord - vec2(d.x, 0.0), wanted, strength)),
                      min(Stays(vTexCoord + vec2(0.0, d.y), wanted, strength), Stays(vTexCoord - vec2(0.0, d.y), wanted, strength)));
    float alpha = mix(1.0, mix(own, min(own, least), edge), amount);
    // The part of the colour that points to the key.
    vec2 direction = wanted / max(length(wanted), 1e-4);
    float towards = max(dot(Chroma(rgb), direction) - 0.02, 0.0) * spill * amount;
    vec2 less = -direction * towards;
    vec3 clean = rgb + vec3(1.5748 * less.y, -0.1873 * less.x - 0.4681 * less.y, 1.8556 * less.x);
    fragColor = Premultiplied(clean, c.a * alpha);
}
