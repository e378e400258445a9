// SPDX-License-Identifier: GPL-3.0-or-later
// The picture jumps towards the viewer on every beat, flashes, and splits its colours.
#include "color.glsl"
#include "frame.glsl"

uniform float zoom;
uniform float flash;
uniform float split;  // in heights of the frame

void main() {
    float beat = smoothstep(0.1, 0.9, audio_intensity);
    vec2 p = ToHeightUnits(vTexCoord) / (1.0 + zoom * beat);
    vec2 shift = p * split * beat * 2.0;
    vec4 mid = Input0(FromHeightUnits(p));
    vec4 outer = Input0(FromHeightUnits(p - shift));
    vec4 inner = Input0(FromHeightUnits(p + shift));
    vec3 rgb = vec3(outer.r, mid.g, inner.b);
    rgb = 1.0 - (1.0 - rgb) * (1.0 - rgb * flash * beat);
    float alpha = max(mid.a, max(outer.a, inner.a));
    float vignette = 1.0 - 0.35 * beat * smoothstep(0.4, 1.0, length(p));
    fragColor = vec4(min(rgb * vignette, alpha), alpha);
}
