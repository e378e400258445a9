// SPDX-License-Identifier: GPL-3.0-or-later
// The first clip burns away along a noise, with glowing borders.
#include "color.glsl"
#include "frame.glsl"
#include "noise.glsl"
#include "progress.glsl"

uniform float scale;     // size of the grain: cells along the height of the frame
uniform float softness;
uniform float glow;
uniform int glow_color;

void main() {
    float border = softness + 0.12;
    float level = mix(-border, 1.0 + border, Progress());
    float n = Fbm(ToHeightUnits(vTexCoord) * scale + 31.7);
    n = clamp((n - 0.2) / 0.6, 0.0, 1.0);  // the sum of octaves stays in the middle: spread it out
    float second = 1.0 - smoothstep(level - softness, level + max(softness, 0.0001), n);
    vec4 c = mix(Input0(vTexCoord), Input1(vTexCoord), second);
    float ember = glow * smoothstep(0.12, 0.0, abs(n - level));
    vec3 light = UnpackColor(glow_color) * ember;
    fragColor = vec4(min(c.rgb + light * c.a, c.a), c.a);
}
