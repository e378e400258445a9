// SPDX-License-Identifier: GPL-3.0-or-later
// Shades of the people grow out of them and fade, one after the other.
#include "color.glsl"
#include "frame.glsl"

uniform float offsetHalfHuman;  // height that they grow about, 0 at the lower edge of the frame
uniform float midHuman;         // the middle of the person; 0 or 1 where there is none
uniform float size;             // of the largest
uniform int echoes;
uniform float opacity;
uniform float speed;  // echoes a second
uniform float tint;   // how much of the colours they take
uniform int color;    // of the smallest
uniform int second_color;

const int kMostEchoes = 6;

void main() {
    vec4 clip = Input0(vTexCoord);
    vec2 about = vec2(midHuman > 0.0 && midHuman < 1.0 ? midHuman : 0.5, offsetHalfHuman);
    float phase = fract(speed * global_time);

    vec4 picture = clip;
    for (int k = min(echoes, kMostEchoes) - 1; k >= 0; --k) {
        // 0 at the people, 1 when it is gone.
        float age = (float(k) + phase) / float(clamp(echoes, 1, kMostEchoes));
        vec2 uv = about + (vTexCoord - about) / mix(1.0, size, age);
        vec4 echo = Input1(uv) * FadeAtBorder(uv);
        vec3 tone = mix(UnpackColor(color), UnpackColor(second_color), age);
        vec3 tinted = tone * (0.5 + 0.8 * Luma(Straight(echo)));
        echo = Premultiplied(mix(Straight(echo), tinted, tint), echo.a);
        float seen = opacity * (1.0 - age) * smoothstep(0.0, 0.12, age);
        picture = Over(echo * seen, picture);
    }
    fragColor = mix(picture, clip, Input1(vTexCoord).a);
}
