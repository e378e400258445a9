// SPDX-License-Identifier: GPL-3.0-or-later
// The clip stands at a lake. The first layer is the mirrored picture, stirred by waves that grow
// towards the viewer; the second puts it below the line.
#include "noise.glsl"
#include "reflection.glsl"

uniform float amount;
uniform float waves;
uniform float speed;
uniform float clearness;  // of the water
uniform int calLayer;

void main() {
    float below = Below(vTexCoord, baseLine);
    fragColor = Input0(vTexCoord);
    if (below * uResolution.y < -1.0) return;
    if (calLayer == 1) {
        float depth = max(below, 0.0);
        vec2 p = ToHeightUnits(vTexCoord);
        float t = global_time * speed;
        // Rows of waves come closer together towards the far shore.
        float row = 26.0 * log(1.0 + 9.0 * depth);
        float swell = sin(row + 2.2 * t + 3.0 * ValueNoise(vec2(5.0 * p.x + 0.4 * t, 0.35 * row)));
        float ripple = ValueNoise(vec2(16.0 * p.x, 1.4 * row - 3.0 * t)) - 0.5;
        vec2 shift = waves * depth * (0.030 * swell * FloorDown() + 0.050 * ripple * vec2(FloorDown().y, -FloorDown().x));
        vec4 c = Input0(Mirrored(FromHeightUnits(p + shift), baseLine));
        // Slopes towards the sky glint.
        c.rgb += 0.10 * waves * smoothstep(0.55, 1.0, swell * (0.6 + ripple)) * smoothstep(0.0, 0.15, depth) * c.a;
        fragColor = vec4(min(c.rgb, vec3(c.a)), c.a);
        return;
    }
    vec4 clip = fragColor;
    vec4 lake = Input1(vTexCoord);
    float away = clamp(below / FloorDepth(), 0.0, 1.0);
    float murk = (1.0 - clearness) + 0.35 * clearness * away;
    lake.rgb = mix(lake.rgb * 0.92, Tint() * lake.a, murk);
    // A dark shore line, so that land and water part.
    lake.rgb *= 1.0 - 0.35 * exp(-90.0 * max(below, 0.0));
    fragColor = mix(clip, lake, amount * Beneath(vTexCoord, baseLine));
}
