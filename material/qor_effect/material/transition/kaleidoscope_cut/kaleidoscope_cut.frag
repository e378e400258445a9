// SPDX-License-Identifier: GPL-3.0-or-later
// The clips meet in the mirrors of a kaleidoscope.
#include "transition.glsl"

uniform int mirrors;
uniform float turn;  // degrees that it turns on the way
uniform float easing;

void main() {
    float t = Eased(easing);
    float strength = smoothstep(0.0, 0.35, t) * smoothstep(1.0, 0.65, t);
    vec2 p = ToHeightUnits(vTexCoord);
    float sector = 6.2831853 / float(clamp(mirrors, 3, 16));
    float angle = atan(p.y, p.x) + radians(turn) * t;
    float folded = abs(mod(angle, sector) - 0.5 * sector) - radians(turn) * t * 0.5;
    vec2 q = length(p) * vec2(cos(folded), sin(folded)) * 0.9;
    vec2 plain = vTexCoord;
    vec2 glass = Mirror(FromHeightUnits(q));
    vec4 first = mix(Input0(plain), Input0(glass), strength);
    vec4 second = mix(Input1(plain), Input1(glass), strength);
    fragColor = Exact(mix(first, second, t));
}
