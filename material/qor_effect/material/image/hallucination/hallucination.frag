// SPDX-License-Identifier: GPL-3.0-or-later
// Echoes of earlier frames that breathe and change colour along a ramp.
// Slot 1 is the kept frame, slot 2 the ramp (the second texture of the description).
#include "color.glsl"
#include "frame.glsl"

uniform float filter_;           // strength of the ramp's colours
uniform float echo;              // how much of the kept frame stays
uniform int isLastFrameAddLut;   // 1: there is no kept frame yet

void main() {
    vec4 c = Input0(vTexCoord);
    vec3 rgb = Straight(c);
    float turn = 0.07 * global_time;
    vec3 ramp = Input2(vec2(fract(Luma(rgb) * 0.85 + turn), 0.5)).rgb;
    vec3 now = mix(rgb, Screen(rgb * 0.75, ramp * 0.75), filter_);
    if (isLastFrameAddLut == 0) {
        vec2 p = ToHeightUnits(vTexCoord);
        float sway = 0.012 * sin(global_time * 2.3 + p.y * 5.0);
        vec2 from = Rotate(p, 0.012 * sin(global_time * 1.7)) * 0.985 + vec2(sway, 0.0);
        vec3 before = Straight(Input1(FromHeightUnits(from)));
        vec3 hsv = RgbToHsv(before);
        hsv.x = fract(hsv.x + 0.02);  // each echo is turned a little further
        before = HsvToRgb(hsv);
        now = mix(now, max(now * 0.6, before), echo * smoothstep(0.0, 0.1, filter_));
    }
    fragColor = Premultiplied(now, c.a);
}
