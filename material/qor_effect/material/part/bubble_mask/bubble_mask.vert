// SPDX-License-Identifier: GPL-3.0-or-later
// Bubbles that rise through the frame, each in its own time, and grow on the way.
#include "progress.glsl"
in vec4 position;    // where the bubble crosses the middle of its way, device space
in vec3 texcoord;    // corner -1..1, index
in vec4 attributes;  // size, pace, drift, phase
out vec2 vCorner;
out float vStrength;

void main() {
    float t = Progress();
    float aspect = uResolution.x / uResolution.y;
    // Later bubbles start later; all have come by the time the transition is over.
    float start = 0.45 * fract(texcoord.z * 0.6180340);  // the golden ratio spreads the starts evenly
    float life = clamp((t - start) / 0.55, 0.0, 1.0);
    float grown = smoothstep(0.0, 0.7, life);
    float size = (0.10 + 0.5 * abs(attributes.x)) * grown;
    vec2 centre = position.xy;
    centre.y += (life - 0.5) * (1.0 + abs(attributes.y));
    centre.x += 0.35 * attributes.z * sin(6.2831853 * (0.6 * t + attributes.w));
    vCorner = texcoord.xy;
    vStrength = life > 0.0 ? 1.0 : 0.0;
    gl_Position = vec4(centre + texcoord.xy * size * vec2(1.0 / aspect, 1.0), 0.0, 1.0);
    vTexCoord = texcoord.xy * 0.5 + 0.5;
}
