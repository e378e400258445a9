// SPDX-License-Identifier: GPL-3.0-or-later
// Rings run over the picture as over water.
#include "frame.glsl"

uniform float amount;  // in heights of the frame
uniform float waves;   // rings a height
uniform float speed;   // rings a second
uniform float center_x;
uniform float center_y;
uniform float falloff;  // how soon the rings flatten

void main() {
    vec2 p = ToHeightUnits(vTexCoord) - (vec2(center_x, center_y) - 0.5) * vec2(Aspect(), 1.0);
    float from = length(p);
    float height = sin(6.2831853 * (from * waves - global_time * speed)) * exp(-falloff * from);
    // Calm in the very middle, where the rings have no direction.
    vec2 away = from > 1e-4 ? p / from * smoothstep(0.0, 0.25 / waves, from) : vec2(0.0);
    vec2 uv = vTexCoord + away * height * amount / vec2(Aspect(), 1.0);
    vec4 c = Input0(Mirror(uv));
    float shine = 1.0 + 6.0 * amount * height;
    fragColor = vec4(min(c.rgb * shine, c.a), c.a);
}
