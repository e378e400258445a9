// SPDX-License-Identifier: GPL-3.0-or-later
// People of a fifth of a second ago and before, four times, behind those of now.
#include "color.glsl"
#include "frame.glsl"

uniform float opacity;   // of the youngest
uniform float fade_out;  // how much fainter the oldest is
uniform float shift_x;   // from copy to copy, in heights of the frame
uniform float tint;      // how much of the colour they take
uniform int color;

vec4 Copy(vec4 cut, float old) {
    vec3 tinted = mix(Straight(cut), UnpackColor(color) * (0.3 + Luma(Straight(cut))), tint);
    return Premultiplied(tinted, cut.a) * (opacity * (1.0 - fade_out * old));
}

void main() {
    vec4 clip = Input0(vTexCoord);
    vec4 picture = clip;
    for (int k = 0; k < 4; ++k) {
        float age = float(4 - k);
        vec2 uv = vTexCoord - vec2(shift_x * age / Aspect(), 0.0);
        vec4 cut = k == 0 ? Input1(uv) : k == 1 ? Input2(uv) : k == 2 ? Input3(uv) : Input4(uv);
        picture = Over(Copy(cut * Inside(uv), (age - 1.0) / 3.0), picture);
    }
    vec4 now = Input5(vTexCoord);
    fragColor = mix(picture, clip, smoothstep(0.1, 0.9, now.a));
}
