// SPDX-License-Identifier: GPL-3.0-or-later
// The first clip slides off the second, with a soft shadow under its edge.
#include "transition.glsl"

uniform float angle;   // degrees; where the first clip goes: 0 right, 90 up
uniform float shadow;
uniform float easing;

void main() {
    float t = Eased(easing);
    vec2 to = vec2(cos(radians(angle)), sin(radians(angle)));
    to /= max(abs(to.x), abs(to.y));
    vec2 uv = vTexCoord - to * t;
    float on = InsideSmooth(uv);
    vec2 outside = max(abs(uv - 0.5) - 0.5, 0.0) * vec2(Aspect(), 1.0);
    float shade = shadow * exp(-length(outside) * 14.0) * (1.0 - t);
    vec4 second = Input1(vTexCoord);
    second.rgb *= 1.0 - 0.7 * shade;
    fragColor = Exact(mix(second, Input0(clamp(uv, 0.0, 1.0)), on));
}
