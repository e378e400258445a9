// SPDX-License-Identifier: GPL-3.0-or-later
// People stand in flames that their movement feeds; the air round them glows.
#include "flame.glsl"
#include "frame.glsl"
#include "color.glsl"
#include "light_over.glsl"

uniform float amount;
uniform float burn;  // how far they are burnt themselves
uniform float dim;    // how dark the background gets
uniform float uTime;  // ticks of 1/25 s
uniform int color;    // of the flames' edge
uniform int color1;   // of their heart

// Slots: clip, feathered flames, person mask.
void main() {
    vec4 clip = Input0(vTexCoord);
    float seconds = uTime / 25.0;
    vec2 p = ToHeightUnits(vTexCoord);
    float person = smoothstep(0.25, 0.75, texture(uInput2, vTexCoord).b);
    vec4 glow = Input1(vTexCoord);
    float fine = Input1(FromHeightUnits(p - vec2(0.0, 0.05))).a;
    if (glow.a + fine < 0.004 && burn == 0.0) {
        // No fire near here.
        fragColor = vec4(clip.rgb * (1.0 - dim * amount * (1.0 - person)), clip.a);
        return;
    }
    vec4 sharp = Input1(FromHeightUnits(p + 0.5 * FlamePush(p * 1.3, seconds, 0.7)));
    float heat = max(sharp.r, max(sharp.g, sharp.b)) * FlameTongues(p * 1.2, seconds);
    vec4 fire = FlameColor(smoothstep(0.12, 1.15, heat), UnpackColor(color), UnpackColor(color1));
    vec3 light = clamp(fire.rgb + 0.3 * glow.rgb, 0.0, 1.0) * amount;

    vec4 back = clip;
    back.rgb *= 1.0 - dim * amount;
    back = LightOver(back, light);
    // The fire shines on the people from behind, and burns them when asked to.
    float ember = smoothstep(0.45, 0.8, Fbm(p * 14.0 - vec2(0.0, seconds)));
    vec3 burnt = clip.rgb * 0.12 + UnpackColor(color) * ember * 0.9 * clip.a;
    vec3 body = mix(clip.rgb, burnt, burn * amount);
    body += (clip.a - body) * light * 0.22;
    fragColor = mix(back, vec4(body, clip.a), person);
}
