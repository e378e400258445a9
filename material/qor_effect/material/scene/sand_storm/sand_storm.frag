// SPDX-License-Identifier: GPL-3.0-or-later
// A storm tears sand off the clip: dust in the air, and two layers of grains, the nearer one with a
// blur of its own. Slots: clip, near layer, far layer, near layer feathered.
#include "color.glsl"
#include "frame.glsl"
#include "noise.glsl"

uniform float amount;
uniform float haze;
uniform float speed;
uniform int color;

void main() {
    vec4 clip = Input0(vTexCoord);
    vec3 sand = UnpackColor(color);
    vec2 p = ToHeightUnits(vTexCoord);
    // Streaks of dust: noise drawn out along the wind, in front of slow clouds.
    float t = global_time * speed;
    float clouds = Fbm(vec2(1.6 * p.x - 0.9 * t, 2.6 * p.y + 0.1 * t));
    float streaks = ValueNoise(vec2(3.0 * p.x - 3.6 * t, 34.0 * p.y + 4.0 * clouds));
    float dust = haze * clamp(0.15 + 0.75 * clouds * clouds + 0.25 * clouds * streaks, 0.0, 1.0);
    vec4 stormy = vec4(mix(clip.rgb, sand * clip.a, 0.25 * haze), clip.a);
    stormy = Over(0.8 * Input2(vTexCoord), stormy);
    stormy.rgb = mix(stormy.rgb, sand * (0.75 + 0.5 * clouds) * stormy.a, dust);
    stormy = Over(0.9 * Input3(vTexCoord), stormy);
    stormy = Over(Input1(vTexCoord), stormy);
    fragColor = mix(clip, stormy, amount);
}
