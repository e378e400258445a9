// SPDX-License-Identifier: GPL-3.0-or-later
// Lines where the picture changes, hatching where it is dark, on paper.
#include "color.glsl"
#include "frame.glsl"
#include "noise.glsl"

uniform float amount;
uniform float strength;  // of the lines
uniform float width;     // of the lines, in heights of the frame
uniform float hatching;
uniform int paper;
uniform int ink;

float LumaAt(vec2 offset) {
    vec4 c = Input0(vTexCoord + offset);
    return Luma(c.rgb) + (1.0 - c.a);
}

// Pencil strokes along a direction; 1 on a stroke.
float Strokes(vec2 p, float degrees, float spacing) {
    vec2 q = Rotate(p, radians(degrees));
    q.y += 0.15 * spacing * (ValueNoise(q / spacing * 0.7) - 0.5);
    float wave = 0.5 + 0.5 * cos(q.y / spacing * 6.2831853);
    return smoothstep(0.45, 0.85, wave) * (0.65 + 0.35 * ValueNoise(q / spacing * vec2(0.5, 4.0)));
}

void main() {
    vec2 step = vec2(width / Aspect(), width);
    float tl = LumaAt(step * vec2(-1, 1)), t = LumaAt(step * vec2(0, 1)), tr = LumaAt(step * vec2(1, 1));
    float l = LumaAt(step * vec2(-1, 0)), r = LumaAt(step * vec2(1, 0));
    float bl = LumaAt(step * vec2(-1, -1)), b = LumaAt(step * vec2(0, -1)), br = LumaAt(step * vec2(1, -1));
    vec2 gradient = vec2(tr + 2.0 * r + br - tl - 2.0 * l - bl, tl + 2.0 * t + tr - bl - 2.0 * b - br);
    vec2 p = ToHeightUnits(vTexCoord);
    float tooth = 0.75 + 0.25 * ValueNoise(p * 300.0);
    float line = smoothstep(0.12, 0.9, length(gradient) * strength) * tooth;
    vec4 c = Input0(vTexCoord);
    float dark = 1.0 - Luma(Straight(c));
    float spacing = max(0.0115, 4.0 / uResolution.y);  // strokes nearer than four pixels would blur
    float shade = smoothstep(0.45, 0.75, dark) * Strokes(p, 45.0, spacing);
    shade = max(shade, smoothstep(0.7, 0.92, dark) * Strokes(p, -40.0, 0.9 * spacing));
    float drawn = clamp(line + hatching * 0.75 * shade, 0.0, 1.0);
    vec3 sheet = UnpackColor(paper) * (0.97 + 0.03 * ValueNoise(p * 240.0));
    fragColor = Premultiplied(mix(Straight(c), mix(sheet, UnpackColor(ink), drawn), amount), c.a);
}
