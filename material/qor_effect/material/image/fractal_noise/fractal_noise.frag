// SPDX-License-Identifier: GPL-3.0-or-later
// Clouds out of nothing: octaves of noise, bent by themselves, that change with time. No input.
#include "color.glsl"
#include "frame.glsl"
#include "noise.glsl"

uniform float scale;       // cells along the height of the frame
uniform float contrast;
uniform float brightness;
uniform float evolution;   // speed of the change
uniform int octaves;
uniform float turbulence;  // how far the noise bends itself
uniform int dark;
uniform int bright;

float Noise3(vec2 p, float z) {
    int layer = int(floor(z));
    float t = smoothstep(0.0, 1.0, fract(z));
    return mix(ValueNoise(p + float(layer) * 37.0), ValueNoise(p + float(layer + 1) * 37.0), t);
}

float Octaves(vec2 p, float z) {
    float sum = 0.0;
    float weight = 0.5;
    float weights = 0.0;
    for (int k = 0; k < min(octaves, 8); ++k) {
        sum += weight * Noise3(p, z + float(k) * 3.7);
        weights += weight;
        p = Rotate(p, 0.6) * 2.02;
        weight *= 0.55;
    }
    return weights > 0.0 ? sum / weights : 0.0;
}

void main() {
    vec2 p = ToHeightUnits(vTexCoord) * scale + 50.0;
    float z = global_time * evolution + 3.0;
    vec2 bend = vec2(Octaves(p + 11.3, z), Octaves(p + 47.9, z)) - 0.5;
    float n = Octaves(p + bend * turbulence * 4.0, z);
    n = clamp((n - 0.5) * contrast * 1.8 + 0.5 + brightness, 0.0, 1.0);
    fragColor = vec4(mix(UnpackColor(dark), UnpackColor(bright), n), 1.0);
}
