// SPDX-License-Identifier: GPL-3.0-or-later
// Colours: pictures are premultiplied, all functions on vec3 take straight values.

// Rec. 709 luma of a straight colour.
float Luma(vec3 c) { return dot(c, vec3(0.2126, 0.7152, 0.0722)); }

// 0xRRGGBB as 0..1.
vec3 UnpackColor(int rgb) {
    return vec3(float((rgb >> 16) & 255), float((rgb >> 8) & 255), float(rgb & 255)) / 255.0;
}

vec3 Straight(vec4 c) { return c.a > 0.0 ? c.rgb / c.a : vec3(0.0); }
vec4 Premultiplied(vec3 c, float a) { return vec4(clamp(c, 0.0, 1.0) * a, a); }

// `top` over `bottom`, both premultiplied.
vec4 Over(vec4 top, vec4 bottom) { return top + bottom * (1.0 - top.a); }

vec3 Screen(vec3 a, vec3 b) { return 1.0 - (1.0 - a) * (1.0 - b); }

vec3 Overlay(vec3 base, vec3 blend) {
    return mix(2.0 * base * blend, 1.0 - 2.0 * (1.0 - base) * (1.0 - blend), step(0.5, base));
}

vec3 RgbToHsv(vec3 c) {
    float high = max(c.r, max(c.g, c.b));
    float range = high - min(c.r, min(c.g, c.b));
    float hue = 0.0;
    if (range > 0.0) {
        if (high == c.r) hue = mod((c.g - c.b) / range, 6.0);
        else if (high == c.g) hue = (c.b - c.r) / range + 2.0;
        else hue = (c.r - c.g) / range + 4.0;
    }
    return vec3(hue / 6.0, high > 0.0 ? range / high : 0.0, high);
}

vec3 HsvToRgb(vec3 c) {
    vec3 k = abs(fract(c.x + vec3(0.0, 2.0, 1.0) / 3.0) * 6.0 - 3.0);
    return c.z * mix(vec3(1.0), clamp(k - 1.0, 0.0, 1.0), c.y);
}
