// SPDX-License-Identifier: GPL-3.0-or-later
// Printed dots: black alone, or cyan, magenta, yellow and black screens at the angles of a press.
#include "color.glsl"
#include "frame.glsl"

uniform float amount;
uniform float size;   // distance of two dots in heights of the frame
uniform float angle;  // degrees, added to all screens
uniform int cmyk;

// Below this many pixels a cell is grey rather than a dot: small pictures get fewer dots.
const float kLeastCell = 5.0;

// Radius of the dot that covers the part `ink` of its cell, in cells. Up to pi / 4 the dot is a whole
// circle; from there it grows into its neighbours until it reaches the cell's corners.
float DotRadius(float ink) {
    return mix(0.5642 * sqrt(ink), 0.7072, smoothstep(0.75, 1.0, ink));
}

// Ink of one screen at this place: 1 inked. `channel` picks the plate: 0..2 cyan, magenta, yellow, 3 black.
float Screen1(int channel, float degrees) {
    float cell = max(size, kLeastCell / uResolution.y);
    vec2 p = Rotate(ToHeightUnits(vTexCoord), radians(degrees)) / cell;
    vec2 centre = floor(p) + 0.5;
    vec2 uv = FromHeightUnits(Rotate(centre * cell, -radians(degrees)));
    vec3 rgb = Straight(Input0(clamp(uv, 0.0, 1.0)));
    float black = 1.0 - max(rgb.r, max(rgb.g, rgb.b));
    float ink;
    if (cmyk == 0) ink = 1.0 - Luma(rgb);
    else if (channel == 3) ink = black;
    else ink = (1.0 - rgb[channel] - black) / max(1.0 - black, 0.001);
    ink = clamp(ink, 0.0, 1.0);
    float dotRadius = DotRadius(ink);
    float pixel = min(1.0 / (cell * uResolution.y), dotRadius);
    return 1.0 - smoothstep(dotRadius - pixel, dotRadius + max(pixel, 1e-4), length(p - centre));
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
