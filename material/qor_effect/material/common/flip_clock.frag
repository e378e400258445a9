// SPDX-License-Identifier: GPL-3.0-or-later
// The pages, and then the clip with them: slot 2 has them with shadow and light.
#include "color.glsl"
#include "digits.glsl"
#include "noise.glsl"

uniform int General_opacity;  // percent
uniform float dim;            // of the clip
uniform int Page_color;
uniform int Digit_color;
uniform int leftNumHour, rightNumHour, leftNumNextHour, rightNumNextHour;
uniform int leftNumMinute, rightNumMinute, leftNumNextMinute, rightNumNextMinute;
uniform int leftNumSecond, rightNumSecond, leftNumNextSecond, rightNumNextSecond;

in vec2 vCard;
flat in int vSheet;
flat in int vPage;
flat in float vNext;
in float vLight;

// Left and right digit; the left one changes only when the right one is 0.
ivec2 Digits() {
    ivec4 d = vPage == 0   ? ivec4(leftNumHour, rightNumHour, leftNumNextHour, rightNumNextHour)
              : vPage == 1 ? ivec4(leftNumMinute, rightNumMinute, leftNumNextMinute, rightNumNextMinute)
                           : ivec4(leftNumSecond, rightNumSecond, leftNumNextSecond, rightNumNextSecond);
    if (vNext < 0.5) return d.xy;
    return ivec2(d.y == 0 ? d.z : d.x, d.w);
}

// To the border of a square of half side 1 with round corners, below 0 inside.
float ToPage(vec2 p) {
    vec2 q = abs(p) - 0.82;
    return length(max(q, 0.0)) + min(max(q.x, q.y), 0.0) - 0.18;
}

// A soft light from above, fine fibres, a groove across.
float PageLight() {
    float up = abs(vCard.y);
    float light = vCard.y > 0.0 ? mix(0.86, 1.0, up) : mix(0.80, 0.66, up);
    float fibre = ValueNoise(vCard * 70.0);
    float groove = 1.0 - 0.75 * smoothstep(0.03, 0.01, up);
    return (light + 0.03 * (fibre - 0.5)) * groove;
}

void main() {
    float shown = float(General_opacity) / 100.0;
    if (vSheet == 0) {
        vec4 clip = Input0(vTexCoord);
        float r = length(ToHeightUnits(vTexCoord));
        float dark = dim * shown * smoothstep(-0.2, 0.9, r + 0.25);
        fragColor = Over(Input2(vTexCoord), vec4(clip.rgb * (1.0 - dark), clip.a));
        return;
    }
    if (vSheet == 1) {
        float edge = ToPage(vCard);
        fragColor = Premultiplied(0.4 * UnpackColor(Page_color), clamp(0.5 - edge / max(fwidth(edge), 1e-5), 0.0, 1.0)) * shown;
        return;
    }
    float border = ToPage(vCard);
    float cover = clamp(0.5 - border / max(fwidth(border), 1e-5), 0.0, 1.0);
    ivec2 digits = Digits();
    float side = vCard.x < 0.0 ? -1.0 : 1.0;
    vec2 p = (vCard - vec2(0.41 * side, 0.0)) / vec2(0.62, 0.62);
    float stroke = ToDigit(p, side < 0.0 ? digits.x : digits.y) - 0.115;
    float ink = clamp(0.5 - stroke / max(length(fwidth(vCard)) * 1.14, 1e-5), 0.0, 1.0);
    float page = PageLight();
    vec3 rgb = mix(UnpackColor(Page_color) * page, UnpackColor(Digit_color) * mix(1.0, page, 0.45), ink) * vLight;
    // A light rim along the upper edge.
    rgb += 0.10 * smoothstep(-0.03, 0.0, border) * step(0.0, vCard.y);
    fragColor = Premultiplied(rgb, cover) * shown;
}
