// SPDX-License-Identifier: GPL-3.0-or-later
// Bars that give the picture the shape of a cinema screen; they slide in with `amount`.
#include "color.glsl"
#include "frame.glsl"

uniform float ratio;  // width by height of what is left
uniform float amount;
uniform int color;
uniform float softness;  // in heights of the frame

void main() {
    vec2 p = abs(ToHeightUnits(vTexCoord));
    vec2 half_ = 0.5 * vec2(Aspect(), 1.0);
    vec2 left = Aspect() < ratio ? vec2(half_.x, half_.x / ratio) : vec2(half_.y * ratio, half_.y);
    vec2 over = p - mix(half_, left, amount);
    float pixel = 1.0 / uResolution.y;
    vec2 bar = smoothstep(vec2(-0.5 * pixel), vec2(0.5 * pixel + softness), over);
    bar *= step(left + 0.25 * pixel, half_) * step(1e-5, amount);
    float covered = max(bar.x, bar.y);
    fragColor = mix(Input0(vTexCoord), vec4(UnpackColor(color), 1.0), covered);
}
