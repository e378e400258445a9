// SPDX-License-Identifier: GPL-3.0-or-later
// People before a studio wall in a colour that runs into another, or before nothing at all, for a clip
// below.
#include "color.glsl"
#include "person.glsl"

uniform float amount;
uniform float opacity;  // of the wall
uniform int color;
uniform int lower_color;
uniform float shadow;  // that the people throw on the wall
uniform float trim;    // how far the edge is drawn inwards, where the old background shows through

const vec2 kFall = vec2(0.02, -0.025);  // of the shadow, in heights of the frame
const float kSoft = 0.05;

void main() {
    vec4 clip = Input0(vTexCoord);
    float person = PersonAround(vTexCoord, 0.004, 12);
    float inside = smoothstep(0.5 * trim, 1.0 - 0.3 * trim, person);

    // A spot of light on the wall, a little above the middle.
    float away = length((vTexCoord - vec2(0.5, 0.6)) * vec2(0.8, 1.0));
    float height = smoothstep(0.0, 1.0, vTexCoord.y);
    vec3 wall = mix(UnpackColor(lower_color), UnpackColor(color), height);
    wall *= 1.06 - 0.35 * away * away * 2.0;
    vec2 caster = vTexCoord - kFall / vec2(Aspect(), 1.0);
    float dark = shadow * PersonAround(caster, kSoft, 28) * (1.0 - inside);
    wall *= 1.0 - 0.75 * dark;
    // Grain that no eye sees, so that the colours run without steps.
    wall += (fract(52.9829189 * fract(dot(gl_FragCoord.xy, vec2(0.06711056, 0.00583715)))) - 0.5) / 255.0;

    // Without a wall the shadow still falls, on whatever lies below.
    vec4 behind = mix(vec4(0.0, 0.0, 0.0, 0.5 * dark), Premultiplied(wall, 1.0), opacity);
    vec4 kept = WithoutBackground(vTexCoord, inside) * inside;
    fragColor = mix(clip, kept + behind * (1.0 - kept.a), amount);
}
