// SPDX-License-Identifier: GPL-3.0-or-later
// The trail of people as a print of dots, which shrink as it fades.
#include "trail.glsl"

uniform float amount;
uniform int color;   // of the youngest
uniform int color1;  // of the oldest
uniform float size;  // from dot to dot, in heights of the frame

void main() {
    vec4 clip = Input0(vTexCoord);
    vec2 grid = Rotate(ToHeightUnits(vTexCoord), 0.7853982) / size;
    vec2 middle = floor(grid) + 0.5;
    float fresh = Trail(FromHeightUnits(Rotate(middle * size, -0.7853982))).a;
    float radius = 0.62 * sqrt(fresh);
    float soft = 1.0 / (uResolution.y * size);
    float dot_ = fresh > 0.02 ? 1.0 - smoothstep(radius - soft, radius + soft, length(grid - middle)) : 0.0;
    vec3 tone = mix(UnpackColor(color1), UnpackColor(color), smoothstep(0.15, 0.85, fresh));
    fragColor = BehindPeople(clip, vec4(tone, 1.0) * (amount * dot_));
}
