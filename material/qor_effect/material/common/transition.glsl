// SPDX-License-Identifier: GPL-3.0-or-later
// What transitions share: the clips, the pace, edges that are never harder than a pixel.
#include "frame.glsl"
#include "progress.glsl"

// The progress at an even speed (easing 0) up to one that starts and ends gently (1).
float Eased(float easing) {
    float t = Progress();
    return mix(t, t * t * (3.0 - 2.0 * t), easing);
}

// Both ends are the clips themselves, whatever the drawing in between rounds to.
vec4 Exact(vec4 drawn) {
    float t = Progress();
    return t <= 0.0 ? Input0(vTexCoord) : t >= 1.0 ? Input1(vTexCoord) : drawn;
}

// 1 where `distance` (heights of the frame) is below 0, with an edge of `softness` to both sides.
float Cover(float distance, float softness) {
    float soft = max(softness, 0.6 / uResolution.y);
    return 1.0 - smoothstep(-soft, soft, distance);
}

// How much of the second clip a place shows when the places follow each other by `order` (0..1).
float Reveal(float order, float t, float softness) {
    float soft = max(softness, 0.002);
    float edge = mix(-soft, 1.0 + soft, t);
    return 1.0 - smoothstep(edge - soft, edge + soft, order);
}

// The clip that covers the frame at `uv`, and transparency outside, with an edge of one pixel.
float InsideSmooth(vec2 uv) {
    vec2 pixels = (0.5 - abs(uv - 0.5)) / max(fwidth(uv), 1e-6);
    return clamp(pixels.x + 0.5, 0.0, 1.0) * clamp(pixels.y + 0.5, 0.0, 1.0);
}
