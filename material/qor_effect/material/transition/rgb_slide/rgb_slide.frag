// SPDX-License-Identifier: GPL-3.0-or-later
// Red, green and blue slide to the second clip one after the other.
#include "transition.glsl"

uniform float angle;  // degrees; where the second clip comes from: 0 the right, 90 the top
uniform float delay;  // between two colours, as a part of the transition
uniform float easing;

vec4 At(vec2 from, float late) {
    float t = clamp((Progress() - late * delay) / (1.0 - 2.0 * delay), 0.0, 1.0);
    t = mix(t, t * t * (3.0 - 2.0 * t), easing);
    vec2 second = vTexCoord - from * (1.0 - t);
    vec2 first = vTexCoord + from * t;
    return mix(Input0(Mirror(first)), Input1(clamp(second, 0.0, 1.0)), InsideSmooth(second));
}

void main() {
    vec2 from = vec2(cos(radians(angle)), sin(radians(angle)));
    from /= max(abs(from.x), abs(from.y));
    vec4 r = At(from, 0.0);
    vec4 g = At(from, 1.0);
    vec4 b = At(from, 2.0);
    float a = max(r.a, max(g.a, b.a));
    fragColor = Exact(vec4(r.r, g.g, b.b, a));
}
