// SPDX-License-Identifier: GPL-3.0-or-later
// An old print: faded warm colours, a soft gate, scratches and dust. Slot 1 holds the marks.
#include "color.glsl"
#include "frame.glsl"
#include "noise.glsl"

uniform int strength;

void main() {
    float s = float(strength) / 100.0;
    int frame = int(floor(global_time * 18.0));
    vec2 weave = (vec2(Hash(frame), Hash(frame + 57)) - 0.5) * 0.004 * s;  // the film dances in the gate
    vec4 c = Input0(vTexCoord + weave);
    vec3 rgb = Straight(c);
    vec3 faded = mix(rgb, vec3(Luma(rgb)), 0.45) * vec3(1.06, 0.96, 0.74) + vec3(0.07, 0.045, 0.02);
    rgb = mix(rgb, faded, s);
    rgb *= 1.0 - s * 0.12 * Hash(frame + 7);
    vec2 uv = CoverUv(vTexCoord, Input1Size());
    vec3 marks = Input1(uv).rgb * s;
    rgb = mix(rgb, vec3(0.97, 0.93, 0.84), marks.r) * (1.0 - marks.g);
    vec2 p = ToHeightUnits(vTexCoord);
    rgb *= 1.0 - s * 0.75 * smoothstep(0.35, 1.05, length(p));
    // The gate's rounded corners.
    vec2 corner = abs(p) - 0.5 * vec2(Aspect(), 1.0) + 0.06;
    float outside = length(max(corner, 0.0)) - 0.06;
    rgb *= mix(1.0, 1.0 - smoothstep(-0.006, 0.003, outside), s);
    fragColor = Premultiplied(rgb, c.a);
}
