// SPDX-License-Identifier: GPL-3.0-or-later
// Double vision: the picture sways, and a frame of a moment ago hangs over it. Slot 1 is that frame.
#include "frame.glsl"

uniform float speed;
uniform float amount;

void main() {
    vec2 p = ToHeightUnits(vTexCoord);
    float t = global_time * speed * 2.2;
    vec2 sway = 0.022 * amount * vec2(sin(t), cos(t * 0.8));
    float swell = 1.0 - 0.025 * amount * (1.0 + sin(t * 0.6));
    vec4 left = Input0(FromHeightUnits(p * swell + sway));
    vec4 right = Input0(FromHeightUnits(p * swell - sway));
    vec4 before = Input1(FromHeightUnits(Rotate(p, 0.02 * sin(t * 0.7)) * (swell - 0.02)));
    vec4 seen = vec4(left.r, mix(left.g, right.g, 0.5), right.b, max(left.a, right.a));
    vec4 both = mix(seen, before, 0.38);
    // The borders of the sight swim.
    float blur = smoothstep(0.3, 0.9, length(p));
    vec4 wide = (Input0(FromHeightUnits(p * (swell - 0.05))) + Input0(FromHeightUnits(p * (swell - 0.09)))) * 0.5;
    fragColor = mix(Input0(vTexCoord), mix(both, wide, 0.55 * blur), smoothstep(0.0, 0.5, amount));
}
