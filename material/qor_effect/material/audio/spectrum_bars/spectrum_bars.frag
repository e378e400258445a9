// SPDX-License-Identifier: GPL-3.0-or-later
// Bars that rise with the sound, low tones on the left.
#include "color.glsl"
#include "frame.glsl"

uniform int bars;
uniform float height;    // of a full bar, in heights of the frame
uniform float position;  // of the foot, from the bottom
uniform float gap;       // empty part between bars
uniform int low_color;
uniform int high_color;

void main() {
    vec4 c = Input0(vTexCoord);
    float margin = 0.06;
    float x = (vTexCoord.x - margin) / (1.0 - 2.0 * margin);
    float count = float(max(bars, 1));
    float index = floor(x * count);
    float inside = fract(x * count);
    // Even steps for the ear: the bars' places in the spectrum grow by a power.
    float from = pow(index / count, 2.0);
    float to = pow((index + 1.0) / count, 2.0);
    float level = 0.0;
    for (int k = 0; k < 6; ++k) level = max(level, AudioAt(mix(from, to, (float(k) + 0.5) / 6.0)));
    float top = position + height * max(level, 0.012);
    float y = vTexCoord.y;
    vec2 border = vec2(fwidth(x * count), 1.0 / uResolution.y);
    float bar = smoothstep(0.5 * gap, 0.5 * gap + border.x, inside) *
                smoothstep(1.0 - 0.5 * gap, 1.0 - 0.5 * gap - border.x, inside) *
                smoothstep(position - border.y, position, y) * smoothstep(top + border.y, top, y);
    bar *= step(0.0, x) * step(x, 1.0);
    vec3 colour = mix(UnpackColor(low_color), UnpackColor(high_color), clamp((y - position) / height, 0.0, 1.0));
    // A soft light around the bars, as if they shone.
    float glow = level * exp(-max(y - top, 0.0) / 0.05) * step(position, y) * step(0.0, x) * step(x, 1.0) * 0.25;
    vec4 base = vec4(1.0 - (1.0 - c.rgb) * (1.0 - colour * glow), 1.0 - (1.0 - c.a) * (1.0 - glow));
    fragColor = Over(vec4(colour, 1.0) * 0.92 * bar, base);
}
