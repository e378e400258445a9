// SPDX-License-Identifier: GPL-3.0-or-later
// A glowing wave that fills the line from left to right as the clip goes by; what is to come is a thread.
#include "color.glsl"
#include "frame.glsl"
#include "light_over.glsl"

uniform float amount;
uniform float range;
uniform float center_y;
uniform float height;
uniform float uRadius;
uniform int color;

float Wave(vec2 uv) { return Input1(uv).a; }

void main() {
    vec4 clip = Input0(vTexCoord);
    vec2 p = ToHeightUnits(vTexCoord);
    float band = height + 0.06;
    vec2 unit = vec2(1.0 / Aspect(), 1.0);
    float line = 0.0;
    float halo = 0.0;
    if (abs(p.y - center_y) < band) {
        line = Wave(vTexCoord);
        for (int k = 0; k < 12; ++k) {
            float angle = 0.5235988 * float(k);
            vec2 way = unit * vec2(cos(angle), sin(angle));
            halo += Wave(vTexCoord + 0.012 * way) + 0.5 * Wave(vTexCoord + 0.026 * way);
        }
        halo /= 18.0;
    }
    float thin = 0.0009 + 0.00012 * uRadius;
    float beyond = max(abs(p.x) - 0.5 * range * Aspect(), 0.0);
    float thread = clamp((thin - length(vec2(beyond, p.y - center_y))) * uResolution.y + 0.5, 0.0, 1.0) * 0.45;
    vec3 tone = UnpackColor(color);
    vec3 light = mix(tone, vec3(1.0), 0.7) * max(line, 0.6 * thread * (1.0 - line)) + tone * halo;
    fragColor = mix(clip, LightOver(clip, clamp(light, 0.0, 1.0)), amount);
}
