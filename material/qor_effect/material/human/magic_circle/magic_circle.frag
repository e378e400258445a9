// SPDX-License-Identifier: GPL-3.0-or-later
// A circle of signs turns behind the people and goes where they go.
#include "color.glsl"
#include "person.glsl"

uniform vec4 uBound;   // left, top, right, bottom of the circle in fractions of the frame, y down
uniform vec3 uCenter;  // moves it from the middle of the people, in heights of the frame, y up
uniform float amount;
uniform float dim;  // how dark the background gets
uniform int color;

const float kUsualLines = 1080.0;  // of a frame on which a pixel of the material is one of the clip

void main() {
    vec4 clip = Input0(vTexCoord);
    vec2 middle = vec2(uBound.x + uBound.z, 2.0 - uBound.y - uBound.w) * 0.5;
    middle += uCenter.xy / vec2(Aspect(), 1.0);
    // As large on a small preview as in the film.
    vec2 size = (uBound.zw - uBound.xy) * uResolution.y / kUsualLines;
    vec2 uv = (vTexCoord - middle) / max(size, 1e-4) + 0.5;
    float light = max(Luma(Input2(FlipV(uv)).rgb) - 0.06, 0.0) / 0.94 * Inside(uv);
    // Nobody is in the frame: their circle is not either, and it stays bright.
    float found = step(uBound.x, 1.5);

    vec3 tone = UnpackColor(color);
    vec3 shine = clamp(tone * light * 1.5 + 0.9 * light * light * light, 0.0, 1.0);
    float near = smoothstep(0.95, 0.15, length(uv - 0.5));
    shine = clamp(shine + 0.22 * tone * near * near, 0.0, 1.0) * found;
    vec4 behind = vec4(clip.rgb * (1.0 - dim * found), clip.a);
    float cover = max(shine.r, max(shine.g, shine.b));
    behind = vec4(behind.rgb + shine * (1.0 - behind.rgb), behind.a + cover * (1.0 - behind.a));
    fragColor = mix(clip, mix(behind, clip, Person(vTexCoord)), amount);
}
