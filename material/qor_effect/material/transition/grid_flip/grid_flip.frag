// SPDX-License-Identifier: GPL-3.0-or-later
// A wall of cards turns over, one after the other.
#include "color.glsl"
#include "transition.glsl"

uniform int columns;
uniform int rows;
uniform float spread;  // how late the last card turns
uniform int background;
uniform float easing;

void main() {
    vec2 count = vec2(clamp(columns, 1, 20), clamp(rows, 1, 20));
    vec2 cell = floor(vTexCoord * count);
    vec2 in_ = fract(vTexCoord * count) - 0.5;
    float late = dot(vec2(cell.x, count.y - 1.0 - cell.y), vec2(1.0)) / max(count.x + count.y - 2.0, 1.0);
    float t = clamp(Eased(easing) * (1.0 + spread) - spread * late, 0.0, 1.0);
    float seen = cos(3.1415927 * t);
    float width = max(abs(seen), 1e-3);
    float x = in_.x / width;
    float lean = 1.0 + 0.25 * sin(3.1415927 * t) * x;
    vec2 q = vec2(x, in_.y * lean);
    vec2 pixel = count / uResolution / vec2(width, 1.0);
    vec2 inside = clamp((0.5 - abs(q)) / pixel + 0.5, 0.0, 1.0);
    // A card at rest joins its neighbours without a seam.
    float rest = 1.0 - smoothstep(0.0, 0.04, min(t, 1.0 - t));
    float on = max(inside.x * inside.y, rest);
    vec2 uv = (cell + clamp(q, -0.5, 0.5) + 0.5) / count;
    vec4 card = seen >= 0.0 ? Input0(uv) : Input1(uv);
    card.rgb *= 1.0 - 0.5 * sin(3.1415927 * t);
    fragColor = Exact(mix(vec4(UnpackColor(background), 1.0), card, on));
}
