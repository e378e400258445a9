// SPDX-License-Identifier: GPL-3.0-or-later
// A blade of light opens the clip out of a colour. Clip in slot 0, lines in slot 1, feathered in slot 2.
#include "color.glsl"
#include "sweep.glsl"

uniform float amount;
uniform float duration;  // seconds that it takes
uniform int closedColor;

void main() {
    vec4 clip = Input0(vTexCoord);
    float lasts = min(duration, total_time);
    float t = lasts > 0.0 ? global_time / lasts : 1.0;
    if (t >= 1.0 || amount <= 0.0) {
        fragColor = clip;
        return;
    }
    vec2 uv = 0.5 + (vTexCoord - 0.5) / (1.0 + 0.25 * smoothstep(0.72, 1.0, t));
    float depth = Depth(uv);
    vec3 light = BladeLight(uv, depth, Input1(uv).a, Input2(uv).a) * (1.0 - smoothstep(0.93, 1.0, t));
    vec4 inner = Input0(0.5 + (vTexCoord - 0.5) * mix(0.93, 1.0, smoothstep(0.2, 1.0, t)));
    vec4 closed = vec4(UnpackColor(closedColor), 1.0);
    fragColor = mix(clip, WithLight(mix(closed, inner, Open(depth)), light), amount);
}
