// SPDX-License-Identifier: GPL-3.0-or-later
// The shapes of people in the colours of the rainbow, one band behind the other.
#include "trail.glsl"

uniform float amount;
uniform int bands;
uniform float speed;  // turns of the colours in a second

void main() {
    vec4 clip = Input0(vTexCoord);
    float fresh = Trail(vTexCoord).a;
    float place = (1.0 - fresh) * float(bands);
    // Smooth by a pixel at the edges of the bands.
    float soft = clamp(fwidth(place), 0.001, 0.5);
    float band = floor(place) + smoothstep(1.0 - soft, 1.0, fract(place));
    vec3 tone = HsvToRgb(vec3(fract(band / float(bands) * 0.85 - speed * Seconds()), 0.8, 1.0));
    float seen = amount * smoothstep(0.02, 0.12, fresh) * mix(0.6, 0.95, fresh);
    fragColor = BehindPeople(clip, vec4(tone, 1.0) * seen);
}
