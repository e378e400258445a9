// SPDX-License-Identifier: GPL-3.0-or-later
// One colour into the shadows, another into the lights.
#include "color.glsl"

uniform float amount;
uniform int shadows;
uniform int highlights;
uniform float balance;  // above 0 the lights win

void main() {
    vec4 c = Input0(vTexCoord);
    vec3 rgb = Straight(c);
    float y = Luma(rgb);
    float light = smoothstep(0.0, 1.0, clamp(y + 0.35 * balance, 0.0, 1.0));
    vec3 dark = UnpackColor(shadows);
    vec3 bright = UnpackColor(highlights);
    // Tints without brightness of their own.
    vec3 tint = (dark - Luma(dark)) * (1.0 - light) * 0.75 + (bright - Luma(bright)) * light * 0.85;
    fragColor = Premultiplied(mix(rgb, rgb + tint * (1.0 - 0.4 * abs(2.0 * y - 1.0)), amount), c.a);
}
