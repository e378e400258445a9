// SPDX-License-Identifier: GPL-3.0-or-later
// Blades of light, and what stands between them. The lines are in one slot, feathered in the next.
#include "frame.glsl"
#include "noise.glsl"
#include "progress.glsl"

uniform vec4 leftLine, rightLine;    // two points each, texture coordinates
uniform vec4 leftLine2, rightLine2;  // the other two sides of a rectangle
uniform int startBlend;              // 1 while the new picture stands between them
uniform float glow;                  // strength of the light round the blades
uniform float sparks;                // how much dust the blades throw up
uniform float soft;                  // of the edge, heights of the frame
uniform float uRadius;               // half width of the blades, thousandths of the frame's height
uniform int glow_color_r, glow_color_g, glow_color_b;

// Whether two points make a line.
bool IsLine(vec4 line) { return distance(line.xy, line.zw) > 1e-3; }

// Signed distance of a place from the line through two points, heights of the frame.
float SideOf(vec4 line, vec2 uv) {
    vec2 shape = vec2(Aspect(), 1.0);
    vec2 way = (line.zw - line.xy) * shape;
    vec2 p = (uv - line.xy) * shape;
    return (way.x * p.y - way.y * p.x) / max(length(way), 1e-5);
}

// How deep a place lies between two lines, below 0 outside.
float Between(vec4 a, vec4 b, vec2 uv) {
    float da = SideOf(a, uv);
    float db = SideOf(b, uv);
    return max(min(da, -db), min(-da, db));
}

// How deep a place lies in what is open; far below 0 while nothing is.
float Depth(vec2 uv) {
    if (startBlend == 0 || !IsLine(leftLine)) return -4.0;
    float depth = Between(leftLine, rightLine, uv);
    return IsLine(leftLine2) ? min(depth, Between(leftLine2, rightLine2, uv)) : depth;
}

float Open(float depth) {
    float edge = max(soft, 0.75 / uResolution.y);
    return smoothstep(-edge, edge, depth);
}

// Distance from the blade itself, heights of the frame; a line without length is none.
float FromBlade(vec4 line, vec2 uv) {
    vec2 shape = vec2(Aspect(), 1.0);
    vec2 way = (line.zw - line.xy) * shape;
    vec2 p = (uv - line.xy) * shape;
    if (!IsLine(line)) return 4.0;
    return distance(p, way * clamp(dot(p, way) / dot(way, way), 0.0, 1.0));
}

vec3 BladeTone() { return vec3(glow_color_r, glow_color_g, glow_color_b) / 255.0; }

// Dust that flies off an edge into what is still closed.
float Dust(vec2 uv, float depth) {
    vec2 p = ToHeightUnits(uv) * 42.0;
    ivec2 cell = ivec2(floor(p));
    vec2 rnd = vec2(Hash(ivec3(cell, 1)), Hash(ivec3(cell, 2)));
    float when = fract(rnd.x * 7.0 + 1.6 * global_time);
    float d = length(fract(p) - (0.25 + 0.5 * vec2(Hash(ivec3(cell, 3)), Hash(ivec3(cell, 4)))));
    float reach = smoothstep(-0.22, -0.01, depth) * step(depth, 0.02);
    return step(0.62, rnd.y) * sin(3.14159 * when) * smoothstep(0.24, 0.02, d) * reach;
}

// The light of the blades: `hot` covers the lines, `near` is the same feathered.
vec3 BladeLight(vec2 uv, float depth, float hot, float near) {
    vec3 tone = BladeTone();
    // Sharp at any size, which the lines of the small picture are not.
    float d = min(min(FromBlade(leftLine, uv), FromBlade(rightLine, uv)),
                  min(FromBlade(leftLine2, uv), FromBlade(rightLine2, uv)));
    float rim = exp(-d / (0.0015 * uRadius + 1e-5)) + 0.45 * exp(-d / 0.03);
    float halo = 1.0 - exp(-4.0 * near * glow);
    vec3 core = mix(tone, vec3(1.0), 0.85);
    return core * min(hot + 0.5 * halo * halo + rim, 1.0) + tone * (halo + 0.6 * rim * glow) +
           mix(tone, vec3(1.0), 0.6) * (1.4 * sparks * Dust(uv, depth));
}

vec4 WithLight(vec4 c, vec3 light) {
    light = clamp(light, 0.0, 1.0);
    float cover = max(light.r, max(light.g, light.b));
    return vec4(c.rgb + light * (1.0 - c.rgb), c.a + cover * (1.0 - c.a));
}
