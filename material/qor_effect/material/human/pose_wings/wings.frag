// SPDX-License-Identifier: GPL-3.0-or-later
// A pair of wings that open at the shoulders: three rows of feathers, the long ones below.
#include "color.glsl"
#include "sticker.glsl"

uniform float spread;  // from the middle to the root of a wing, in units
uniform float glow;
uniform int color;
uniform int shade;  // of the feathers' edges
uniform int behind_person;

// The bone of a wing, from the root (0) to the tip (1).
vec2 Bone(float t) {
    vec2 a = vec2(0.0, -0.6);
    vec2 b = vec2(1.6, 4.4);
    vec2 c = vec2(4.6, 2.9);
    return mix(mix(a, b, t), mix(b, c, t), t);
}

// A feather lies along x from 0 to `length`, widest before its round end. Negative inside.
float ToFeather(vec2 p, float size) {
    float t = clamp(p.x / size, 0.0, 1.0);
    float wide = size * 0.125 * sqrt(max(t * (1.0 - t * t * t * t), 0.0)) * 1.25;
    return max(abs(p.y) - wide, max(-p.x, p.x - size) * 0.6);
}

vec4 wing = vec4(0.0);
float nearest = 1e3;

// A row from the root to the tip, each feather over the one before.
void Row(vec2 p, int count, float first, float last, vec2 angles) {
    for (int i = 0; i < min(count, 16); ++i) {
        float t = (float(i) + 0.5) / float(count);
        float size = mix(first, last, t * (1.7 - 0.7 * t));
        vec2 at = Rotate(p - Bone(t), -radians(mix(angles.x, angles.y, t * t)));
        float distance = ToFeather(at, size);
        nearest = min(nearest, distance);
        // A soft shadow on what lies below.
        wing.rgb *= 1.0 - 0.3 * exp(-9.0 * max(distance, 0.0)) * step(0.0, distance);
        float shaft = smoothstep(0.035, 0.0, abs(at.y)) * smoothstep(1.0, 0.5, at.x / size);
        float light = smoothstep(0.0, 0.22, -distance) * 0.75 + 0.25 * at.x / size;
        vec3 tone = mix(UnpackColor(shade), UnpackColor(color), clamp(light + 0.15, 0.0, 1.0));
        tone = mix(tone, UnpackColor(shade), 0.35 * shaft);
        wing = Over(Premultiplied(tone, Fill(distance)), wing);
    }
}

float StickerReach() { return 9.5 + abs(spread); }

vec4 Sticker(vec2 p) {
    wing = vec4(0.0);
    nearest = 1e3;
    p.x = abs(p.x) - spread;  // the left wing is the right one mirrored
    if (p.x > -2.5 && length(p - vec2(3.0, 0.0)) < 9.0) {
        Row(p, 11, 3.4, 5.6, vec2(-100.0, 14.0));
        Row(p, 10, 2.3, 3.4, vec2(-92.0, 22.0));
        Row(p, 9, 1.3, 1.7, vec2(-80.0, 34.0));
    }
    float halo = glow * 0.7 * exp(-2.2 * max(nearest, 0.0));
    halo *= smoothstep(-2.4, -0.6, p.x) * smoothstep(9.0, 7.0, length(p - vec2(3.0, 0.0)));
    vec3 light = mix(UnpackColor(color), UnpackColor(shade), 0.25);
    return Over(wing, Premultiplied(light, clamp(halo, 0.0, 1.0)));
}

void main() {
    float cover = behind_person == 0 ? 0.0 : smoothstep(0.35, 0.65, texture(uInput2, vTexCoord).b);
    fragColor = WithStickers(14.0, cover);
}
