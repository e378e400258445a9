// SPDX-License-Identifier: GPL-3.0-or-later
// One colour becomes another; light and shade stay.
#include "color.glsl"

uniform float amount;
uniform int from;
uniform int to;
uniform float range;     // of hues, in turns of the colour circle
uniform float softness;

void main() {
    vec4 c = Input0(vTexCoord);
    vec3 rgb = Straight(c);
    vec3 hsv = RgbToHsv(rgb);
    vec3 wanted = RgbToHsv(UnpackColor(from));
    vec3 other = RgbToHsv(UnpackColor(to));
    float away = abs(fract(hsv.x - wanted.x + 0.5) - 0.5);
    float in_ = 1.0 - smoothstep(range, range + softness + 0.005, away);
    in_ *= smoothstep(0.08, 0.28, hsv.y) * smoothstep(0.03, 0.15, hsv.z);
    vec3 changed = HsvToRgb(vec3(fract(hsv.x - wanted.x + other.x),
                                 clamp(hsv.y * other.y / max(wanted.y, 0.15), 0.0, 1.0),
                                 clamp(hsv.z * mix(1.0, other.z / max(wanted.z, 0.2), 0.6), 0.0, 1.0)));
    fragColor = Premultiplied(mix(rgb, changed, amount * in_), c.a);
}
