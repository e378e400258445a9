// SPDX-License-Identifier: GPL-3.0-or-later
// Tiles of the second clip drop into their places, row by row.
#include "noise.glsl"
#include "transition.glsl"

uniform int count;     // rows
uniform float spread;  // how late the last tile comes
uniform float easing;

void main() {
    float tiles = float(clamp(count, 2, 20));
    vec2 p = vec2(vTexCoord.x * Aspect(), vTexCoord.y) * tiles;
    float column = floor(p.x);
    // From the top tile of a column down: the one that is falling covers what it passes.
    float late = spread * (floor(p.y) / tiles * 0.7 + 0.3 * Hash(int(column)));
    float t = clamp((Progress() - late) / (1.0 - spread), 0.0, 1.0);
    t = mix(t, t * t * (3.0 - 2.0 * t), easing);
    float way = (1.0 - t) * 1.0;
    vec2 in_ = fract(p);
    float landed = Cover((in_.y * -1.0 + way) / tiles, 0.0);
    vec2 uv = vTexCoord - vec2(0.0, way / tiles);
    vec4 second = Input1(clamp(uv, 0.0, 1.0));
    second.rgb *= 1.0 - 0.35 * way;
    fragColor = Exact(mix(Input0(vTexCoord), second, landed * step(1e-5, t)));
}
