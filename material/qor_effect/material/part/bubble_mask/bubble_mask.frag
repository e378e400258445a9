// SPDX-License-Identifier: GPL-3.0-or-later
// Red: cover. Green and blue: the bubble's slope to the right and upwards, 0.5 level, for refraction.
// The picture is added up, so that the slopes of bubbles that overlap mix.
in vec2 vCorner;
in float vStrength;

void main() {
    float d = length(vCorner);
    float pixel = fwidth(d);
    float cover = (1.0 - smoothstep(1.0 - pixel, 1.0, d)) * vStrength;
    vec2 slope = vCorner * d * d;
    fragColor = vec4(cover, vec2(0.5 + 0.5 * slope) * cover, cover);
}
