// SPDX-License-Identifier: GPL-3.0-or-later
// A light in the frame: its core and rays, an anamorphic streak, and the ghosts on the way through the lens.
#include "color.glsl"
#include "frame.glsl"
#include "noise.glsl"

uniform float amount;
uniform float light_x;
uniform float light_y;
uniform float size;
uniform float rays;
uniform float streak;
uniform int color;

vec3 Ghost(vec2 p, vec2 at, float radius, vec3 tint) {
    float d = length(p - at) / (radius * size);
    float disc = smoothstep(1.0, 0.82, d) * (0.25 + 0.75 * smoothstep(0.2, 1.0, d));
    return tint * disc;
}

void main() {
    vec4 c = Input0(vTexCoord);
    vec2 p = ToHeightUnits(vTexCoord);
    vec2 light = (vec2(light_x, light_y) - 0.5) * vec2(Aspect(), 1.0);
    vec2 d = p - light;
    float r = length(d) / size;
    float angle = atan(d.y, d.x);
    float star = 0.55 + 0.45 * ValueNoise(vec2(angle * 5.0 + 20.0, 1.0)) * ValueNoise(vec2(angle * 13.0 + 90.0, 2.0)) * 2.0;
    vec3 tint = UnpackColor(color);
    vec3 sum = vec3(1.0) * 0.006 / (r * r + 0.004);
    sum += tint * 0.35 * exp(-r * 4.5) * mix(1.0, star, rays);
    sum += tint * 0.07 * smoothstep(0.03, 0.0, abs(r - 0.42)) * vec3(1.0, 0.7, 0.45);
    sum += streak * vec3(0.35, 0.6, 1.0) * exp(-abs(d.y) / (0.006 * size)) * exp(-abs(d.x) * 1.6 / size) * 0.55;
    sum += 0.22 * Ghost(p, -0.35 * light, 0.05, vec3(0.5, 0.9, 0.6));
    sum += 0.16 * Ghost(p, -0.7 * light, 0.11, vec3(0.9, 0.55, 0.35));
    sum += 0.12 * Ghost(p, -1.25 * light, 0.18, vec3(0.4, 0.5, 1.0));
    sum += 0.2 * Ghost(p, 0.45 * light, 0.035, vec3(0.9, 0.85, 0.5));
    sum = 1.0 - exp(-amount * sum);
    vec3 rgb = Screen(Straight(c), sum);
    float a = max(c.a, min(Luma(sum), 1.0));
    fragColor = vec4(min(rgb * a, a), a);
    if (amount <= 0.0) fragColor = c;
}
