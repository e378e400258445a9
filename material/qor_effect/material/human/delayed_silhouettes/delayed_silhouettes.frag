// SPDX-License-Identifier: GPL-3.0-or-later
// What people did a while ago, four times, as coloured silhouettes behind them.
#include "color.glsl"
#include "frame.glsl"

uniform int style;    // 0 filled, 1 outlines, 2 only where nobody is in front
uniform int speed;      // 1 to 3: how close the moments are to each other
uniform float amount;
uniform int color;      // of the youngest
uniform int color1;     // of the oldest
uniform float spread;   // how far they step aside, in heights of the frame

float Shape(float cover) {
    float inside = smoothstep(0.3, 0.7, cover);
    return style == 1 ? inside * (1.0 - smoothstep(0.7, 0.98, cover)) : inside;
}

void main() {
    vec4 clip = Input0(vTexCoord);
    float now = smoothstep(0.3, 0.7, texture(uInput5, vTexCoord).b);
    vec4 picture = clip;
    float covered = 0.0;
    for (int k = 0; k < 4; ++k) {
        float old = float(3 - k) / 3.0;
        float side = (k & 1) == 0 ? 1.0 : -1.0;
        vec2 uv = vTexCoord + vec2(side * spread * (0.3 + 0.7 * old) / Aspect(), 0.0);
        float cover = (k == 0 ? Input1(uv).b : k == 1 ? Input2(uv).b : k == 2 ? Input3(uv).b : Input4(uv).b);
        float shape = Shape(cover * Inside(uv));
        if (style == 2) shape *= 1.0 - covered;
        covered = max(covered, shape);
        vec3 tone = mix(UnpackColor(color), UnpackColor(color1), old);
        // A silhouette keeps a little of what is behind it.
        picture = Over(vec4(tone * 0.9 + 0.1 * clip.rgb, 1.0) * (amount * shape * mix(0.95, 0.6, old)), picture);
    }
    fragColor = mix(picture, clip, now);
}
