// SPDX-License-Identifier: GPL-3.0-or-later
// A stone falls into the picture: rings run outwards and leave the second clip behind.
#include "transition.glsl"

uniform float amount;  // height of the waves, in heights of the frame
uniform float waves;   // rings a height
uniform float speed;
uniform float easing;

void main() {
    float t = Eased(easing);
    vec2 p = ToHeightUnits(vTexCoord);
    float from = length(p);
    float reach = 0.5 * length(vec2(Aspect(), 1.0));
    float front = mix(-0.25, reach + 0.25, t);
    float near = exp(-pow((from - front) / 0.22, 2.0));
    float wave = sin(6.2831853 * (from * waves - speed * waves * t)) * near * amount;
    vec2 uv = Mirror(FromHeightUnits(p + (from > 0.0 ? p / from : vec2(0.0)) * wave));
    float second = 1.0 - smoothstep(front - 0.18, front + 0.02, from);
    vec4 c = mix(Input0(uv), Input1(uv), second);
    c.rgb = clamp(c.rgb * (1.0 + 2.5 * wave / max(amount, 1e-4) * near * 0.12), 0.0, c.a);
    fragColor = Exact(c);
}
