// SPDX-License-Identifier: GPL-3.0-or-later
// A ring of light that floats above the head.
#include "color.glsl"
#include "sticker.glsl"

uniform float tilt;  // degrees, counter-clockwise
uniform float glow;
uniform int color;

const vec2 kRing = vec2(1.55, 0.42);  // half axes

// Distance to an ellipse: exact on it, good near it.
float ToRing(vec2 p) {
    float inner = length(p / kRing);
    return (inner - 1.0) * inner / max(length(p / (kRing * kRing)), 1e-4);
}

float StickerReach() { return 3.3; }

vec4 Sticker(vec2 p) {
    p = Rotate(p, -radians(tilt));
    float distance = abs(ToRing(p));
    // The far side of the ring is seen thinner and dimmer.
    float near = smoothstep(0.35, -0.35, p.y);
    float tube = mix(0.06, 0.1, near);

    vec3 tone = UnpackColor(color);
    float body = Fill(distance - tube) * mix(0.75, 1.0, near);
    float round = 1.0 - clamp(distance / tube, 0.0, 1.0);
    vec3 hot = mix(tone, vec3(1.0), 0.35 + 0.65 * round);

    float halo = glow * mix(0.6, 0.95, near) * exp(-4.5 * max(distance - tube, 0.0));
    halo += glow * 0.25 * exp(-1.6 * max(distance, 0.0));
    halo *= smoothstep(3.2, 1.6, length(p));

    vec4 light = Premultiplied(mix(tone, vec3(1.0), 0.15), clamp(halo, 0.0, 1.0));
    return Over(Premultiplied(hot, body), light);
}

void main() { fragColor = WithStickers(4.0, 0.0); }
