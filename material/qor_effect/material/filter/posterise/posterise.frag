// SPDX-License-Identifier: GPL-3.0-or-later
// Few levels of each colour, as on a screen-printed poster.
#include "color.glsl"

uniform float amount;
uniform int levels;      // of each channel
uniform float softness;  // of the steps, as a part of one

void main() {
    vec4 c = Input0(vTexCoord);
    vec3 rgb = Straight(c);
    float steps = float(clamp(levels, 2, 16) - 1);
    vec3 scaled = rgb * steps;
    vec3 soft = max(vec3(softness), fwidth(scaled) * 0.5);
    vec3 printed = (floor(scaled) + smoothstep(0.5 - soft, 0.5 + soft, fract(scaled))) / steps;
    fragColor = Premultiplied(mix(rgb, printed, amount), c.a);
}
