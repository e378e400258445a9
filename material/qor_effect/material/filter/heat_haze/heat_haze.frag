// SPDX-License-Identifier: GPL-3.0-or-later
// Hot air trembles and rises; `height` says up to where.
#include "frame.glsl"
#include "noise.glsl"

uniform float amount;
uniform float size;   // of the waves, in heights of the frame
uniform float speed;
uniform float height;

void main() {
    vec2 p = ToHeightUnits(vTexCoord) / size;
    float t = global_time * speed;
    vec2 air = vec2(Fbm(p + vec2(0.3 * t, -1.9 * t)), Fbm(p * 1.2 + vec2(41.0, -2.3 * t))) - 0.5;
    float strength = amount * (1.0 - smoothstep(0.6 * height, height + 0.02, vTexCoord.y) * step(height, 0.999));
    vec2 uv = vTexCoord + air * vec2(0.05, 0.035) * strength * min(size * 10.0, 1.5) / vec2(Aspect(), 1.0);
    fragColor = Input0(Mirror(uv));
}
