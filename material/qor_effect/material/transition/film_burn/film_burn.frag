// SPDX-License-Identifier: GPL-3.0-or-later
// Light leaks into the film, burns it out, and the second clip is left when it fades.
#include "color.glsl"
#include "noise.glsl"
#include "transition.glsl"

uniform float intensity;
uniform float size;  // of the spots, in heights of the frame
uniform int color;

void main() {
    float t = Progress();
    vec2 p = ToHeightUnits(vTexCoord) / size;
    float drift = 0.9 * t;
    float cloud = Fbm(p * 1.7 + vec2(3.0 - 2.0 * drift, 1.5 * drift));
    float streak = Fbm(vec2(p.x * 0.9 - 2.2 * drift, p.y * 0.35 + 9.0));
    float strength = 4.0 * t * (1.0 - t);
    float light = intensity * strength * smoothstep(0.35, 1.05, 0.55 * cloud + 0.6 * streak + 0.25 * strength);
    vec3 warm = UnpackColor(color);
    vec3 glow = light * (warm * 1.1 + vec3(1.0, 0.85, 0.6) * light * light * 0.5);
    vec4 clip = mix(Input0(vTexCoord), Input1(vTexCoord), Reveal(1.0 - cloud, t, 0.35));
    float a = max(clip.a, min(light, 1.0));
    vec3 rgb = clip.rgb + glow * (1.0 - 0.5 * clip.rgb);
    fragColor = Exact(vec4(min(rgb, a), a));
}
