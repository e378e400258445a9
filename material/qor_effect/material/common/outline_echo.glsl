// SPDX-License-Identifier: GPL-3.0-or-later
// The clip in slot 0, outlines that people left behind in slot 1: how strong a place shines, 1 now.
#include "color.glsl"
#include "frame.glsl"
#include "light_over.glsl"
#include "noise.glsl"

uniform float amount;
uniform float dim;  // how dark the rest of the scene gets
uniform int color_r, color_g, color_b;

vec3 Tone() { return vec3(color_r, color_g, color_b) / 255.0; }
float Echo(vec2 uv) { return Input1(uv).a * Inside(uv); }

// The same without its edges, from places round about; `radius` in heights of the frame.
float SoftEcho(vec2 uv, float radius) {
    float sum = 2.0 * Echo(uv);
    vec2 unit = vec2(radius / Aspect(), radius);
    for (int k = 0; k < 8; ++k) {
        float angle = 0.7853982 * float(k);
        vec2 way = unit * vec2(cos(angle), sin(angle));
        sum += Echo(uv + way) + 0.75 * Echo(uv + 0.5 * way);
    }
    return sum / 16.0;
}

vec4 Shown(vec3 light) {
    vec4 clip = Input0(vTexCoord);
    vec4 dark = vec4(clip.rgb * (1.0 - dim), clip.a);
    return mix(clip, LightOver(dark, clamp(light, 0.0, 1.0)), amount);
}
