// SPDX-License-Identifier: GPL-3.0-or-later
// Curtains of northern lights hang from the upper border. The first layer makes them of noise (slot 0);
// the second lays them over the clip.
#include "color.glsl"
#include "frame.glsl"
#include "light_over.glsl"
#include "noise.glsl"

uniform float amount;
uniform float reach;  // how far down they hang, heights of the frame
uniform float dim;
uniform float evolution;
uniform int color;
uniform int color1;
uniform int calLayer;

void main() {
    if (calLayer == 1) {
        float down = 1.0 - vTexCoord.y;
        // Two folded curtains: light at the foot of each, thinning out upwards in rays.
        vec3 light = vec3(0.0);
        for (int k = 0; k < 2; ++k) {
            float n = float(k);
            float x = (vTexCoord.x - 0.5) * Aspect() + 3.0 * n;
            float t = global_time * (0.10 + 0.4 * evolution);
            float fold = Input0(vec2(fract(0.13 * x + 0.37 * n + 0.02 * t), 0.35 + 0.3 * n)).g;
            float foot = reach * (0.45 + 0.3 * n + 0.22 * sin(1.7 * x + 0.7 * t + 2.0 * n) + 0.18 * (fold - 0.5));
            float up = foot - down;
            float rays = ValueNoise(vec2(22.0 * x + 5.0 * sin(2.0 * x + t) + 9.0 * n, 0.8 * t)) *
                         (0.5 + 0.5 * ValueNoise(vec2(5.0 * x + t, 1.3 * t)));
            float body = smoothstep(-0.05, 0.03, up) * exp(-3.2 * max(up, 0.0) / (0.35 + 0.7 * rays));
            vec3 tone = mix(UnpackColor(color), UnpackColor(color1), smoothstep(0.05, 0.5, up / max(reach, 0.1)));
            light += tone * body * (0.25 + 0.9 * rays) * (0.9 - 0.25 * n);
        }
        light = 1.0 - exp(-1.4 * light);
        fragColor = vec4(light, max(light.r, max(light.g, light.b)));
        return;
    }
    vec4 clip = Input0(vTexCoord);
    vec3 light = Input1(vTexCoord).rgb * clip.a;
    vec4 night = vec4(clip.rgb * (1.0 - dim * (1.0 - 0.5 * (1.0 - vTexCoord.y))), clip.a);
    fragColor = mix(clip, LightOver(night, light), amount);
}
