// SPDX-License-Identifier: GPL-3.0-or-later
// Edges shine in the dark.
#include "color.glsl"
#include "frame.glsl"

uniform float amount;
uniform float strength;
uniform float width;       // in heights of the frame
uniform float background;  // how much of the picture stays
uniform float rainbow;     // 0: the picture's colours, 1: colours by direction

void main() {
    vec4 c = Input0(vTexCoord);
    vec3 rgb = Straight(c);
    vec2 d = max(width, 1.0 / uResolution.y) / vec2(Aspect(), 1.0);
    vec3 left = Straight(Input0(vTexCoord - vec2(d.x, 0.0)));
    vec3 right = Straight(Input0(vTexCoord + vec2(d.x, 0.0)));
    vec3 down = Straight(Input0(vTexCoord - vec2(0.0, d.y)));
    vec3 up = Straight(Input0(vTexCoord + vec2(0.0, d.y)));
    vec3 gx = right - left;
    vec3 gy = up - down;
    float edge = sqrt(dot(gx, gx) + dot(gy, gy));
    float light = smoothstep(0.06, 0.9, edge * strength * 0.55);
    float direction = atan(Luma(gy), Luma(gx)) / 6.2831853;
    vec3 hue = HsvToRgb(vec3(fract(direction + 0.05 * global_time + 0.55), 0.85, 1.0));
    vec3 own = max(max(left, right), max(up, down));
    own = own / max(max(own.r, max(own.g, own.b)), 0.15);
    vec3 neon = mix(own, hue, rainbow) * light * 1.25 + 0.5 * light * light * light;
    fragColor = Premultiplied(mix(rgb, rgb * background + neon, amount), c.a);
}
