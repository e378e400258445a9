// SPDX-License-Identifier: GPL-3.0-or-later
// A floor across the frame. Lines come as both ends (x, y, x, y), 0..1 with y up.
#include "color.glsl"
#include "frame.glsl"

uniform vec4 baseLine;
uniform vec4 fixedLine;
uniform float reflectionAngle;  // radians
uniform int tint_color_r, tint_color_g, tint_color_b;

vec2 FloorDown() {
    vec2 along = ToHeightUnits(baseLine.zw) - ToHeightUnits(baseLine.xy);
    return normalize(vec2(along.y, -along.x) + vec2(0.0, -1e-6));
}

// How far a place lies below a line parallel to the floor, in heights of the frame.
float Below(vec2 uv, vec4 line) { return dot(ToHeightUnits(uv) - ToHeightUnits(line.xy), FloorDown()); }

// From the floor to the farthest corner.
float FloorDepth() { return max(Below(fixedLine.xy, baseLine), 1e-4); }

// The place that is seen at `uv` in a mirror along a line; folded back at the borders of the frame.
vec2 Mirrored(vec2 uv, vec4 line) {
    return Mirror(FromHeightUnits(ToHeightUnits(uv) - 2.0 * Below(uv, line) * FloorDown()));
}

vec3 Tint() { return vec3(tint_color_r, tint_color_g, tint_color_b) / 255.0; }

// 1 below a line, with an edge of a pixel.
float Beneath(vec2 uv, vec4 line) { return clamp(Below(uv, line) * uResolution.y + 0.5, 0.0, 1.0); }
