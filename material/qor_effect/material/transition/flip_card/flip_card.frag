// SPDX-License-Identifier: GPL-3.0-or-later
// The frame turns over like a card; the second clip is on its back.
#include "card.glsl"
#include "color.glsl"
#include "transition.glsl"

uniform float angle;     // degrees of the axis: 0 upright, 90 level
uniform float eye; // of the eye, in heights of the frame
uniform int background;
uniform float easing;

void main() {
    float t = Eased(easing);
    float turned = 3.1415927 * t;
    bool back = t > 0.5;
    float away = 0.35 * sin(turned);
    vec3 hit = CardHit(ToHeightUnits(vTexCoord), radians(angle), turned, away, eye);
    vec2 uv = FromHeightUnits(back ? MirrorAcross(hit.xy, radians(angle)) : hit.xy);
    float on = hit.z * InsideSmooth(uv);
    float shade = 1.0 - 0.45 * sin(turned);
    vec4 clip = back ? Input1(clamp(uv, 0.0, 1.0)) : Input0(clamp(uv, 0.0, 1.0));
    clip.rgb *= shade;
    vec4 behind = mix(Input0(vTexCoord), Input1(vTexCoord), t);
    behind = mix(behind, vec4(UnpackColor(background), 1.0), 0.8 * min(1.0, 6.0 * sin(turned)));
    fragColor = Exact(mix(behind, clip, on));
}
