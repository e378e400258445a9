// SPDX-License-Identifier: GPL-3.0-or-later
// The first clip sinks into a colour, out of which the second rises.
#include "color.glsl"
#include "easing.glsl"
#include "progress.glsl"

uniform int color;
uniform float hold;  // part of the time that shows the colour alone

void main() {
    float t = Progress();
    float half_ = 0.5 * (1.0 - hold);
    vec4 solid = vec4(UnpackColor(color), 1.0);
    float first = EaseInOutQuad(clamp(t / half_, 0.0, 1.0));
    float second = EaseInOutQuad(clamp((t - 1.0 + half_) / half_, 0.0, 1.0));
    fragColor = t < 0.5 ? mix(Input0(vTexCoord), solid, first) : mix(solid, Input1(vTexCoord), second);
}
