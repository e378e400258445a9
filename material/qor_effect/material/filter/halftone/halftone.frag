// SPDX-License-Identifier: GPL-3.0-or-later
// Printed dots: black alone, or cyan, magenta, yellow and black screens at the angles of a press.
#include "color.glsl"
#include "frame.glsl"

uniform float amount;
uniform float size;   // distance of two dots in heights of the frame
uniform float angle;  // degrees, added to all screens
uniform int cmyk;

// Ink of one screen at this place: 1 inked. `channel` picks the plate: 0..2 cyan, magenta, yellow, 3 black.
float Screen1(int channel, float degrees) {
    vec2 p = Rotate(ToHeightUnits(vTexCoord), radians(degrees)) / size;
    vec2 centre = floor(p) + 0.5;
    vec2 uv = FromHeightUnits(Rotate(centre * size, -radians(degrees)));
    vec3 rgb = Straight(Input0(clamp(uv, 0.0, 1.0)));
    float black = 1.0 - max(rgb.r, max(rgb.g, rgb.b));
    float ink;
    if (cmyk == 0) ink = 1.0 - Luma(rgb);
    else if (channel == 3) ink = black;
    else ink = (1.0 - rgb[channel] - black) / max(1.0 - black, 0.001);
    float dotRadius = sqrt(clamp(ink, 0.0, 1.0)) * 0.72;  // full ink covers the cell's corners
    float pixel = 1.0 / (size * uResolution.y);
    return 1.0 - smoothstep(dotRadius - pixel, dotRadius + pixel, length(p - centre));
}

void main() {
    vec4 c = Input0(vTexCoord);
    vec3 paper = vec3(0.97, 0.96, 0.93);
    vec3 printed = paper;
    if (cmyk == 0) {
        printed = mix(paper, vec3(0.07), Screen1(3, angle));
    } else {
        printed *= 1.0 - Screen1(0, angle + 15.0) * vec3(1.0, 0.25, 0.05);
        printed *= 1.0 - Screen1(1, angle + 75.0) * vec3(0.1, 1.0, 0.35);
        printed *= 1.0 - Screen1(2, angle) * vec3(0.0, 0.08, 1.0);
        printed *= 1.0 - Screen1(3, angle + 45.0) * vec3(0.92);
    }
    fragColor = Premultiplied(mix(Straight(c), printed, amount), c.a);
}
