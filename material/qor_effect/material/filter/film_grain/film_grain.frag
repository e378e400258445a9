// SPDX-License-Identifier: GPL-3.0-or-later
// Grain that changes with every frame and is strongest in the mid tones, as on negative film.
#include "color.glsl"
#include "frame.glsl"
#include "noise.glsl"

uniform float amount;
uniform float size;        // grain size in pixels of a picture 720 high
uniform float saturation;  // 0 grey grain, 1 each channel for itself

// Sum of four even noises: close to a bell curve, -1..1.
float Grain(ivec2 cell, int layer) {
    float sum = 0.0;
    for (int k = 0; k < 4; ++k) sum += Hash(ivec3(cell, layer * 4 + k));
    return sum * 0.5 - 1.0;
}

float SmoothGrain(vec2 p, int layer) {
    ivec2 cell = ivec2(floor(p));
    vec2 f = fract(p);
    return mix(mix(Grain(cell, layer), Grain(cell + ivec2(1, 0), layer), f.x),
               mix(Grain(cell + ivec2(0, 1), layer), Grain(cell + ivec2(1, 1), layer), f.x), f.y);
}

void main() {
    vec4 c = Input0(vTexCoord);
    vec3 rgb = Straight(c);
    vec2 p = ToHeightUnits(vTexCoord) * 720.0 / size;
    int frame = int(floor(global_time * frame_rate + 0.5)) * 4;
    float grey = SmoothGrain(p, frame);
    vec3 grain = vec3(grey);
    if (saturation > 0.0) {
        vec3 own = vec3(SmoothGrain(p, frame + 1), SmoothGrain(p, frame + 2), SmoothGrain(p, frame + 3));
        grain = mix(grain, own, saturation);
    }
    float luma = Luma(rgb);
    float response = 0.35 + 0.65 * 4.0 * luma * (1.0 - luma);
    fragColor = Premultiplied(rgb + grain * amount * 0.45 * response, c.a);
}
