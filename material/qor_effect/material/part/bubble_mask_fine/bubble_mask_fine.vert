// SPDX-License-Identifier: GPL-3.0-or-later
// A denser swarm: half of it sparkles small, half of it grows.
#include "progress.glsl"
in vec4 position;
in vec3 texcoord;
in vec4 attributes;  // pace, size, drift, -
out vec2 vCorner;
out float vStrength;

void main() {
    float t = Progress();
    float aspect = uResolution.x / uResolution.y;
    float start = 0.5 * fract(texcoord.z * 0.6180340);
    float life = clamp((t - start) / 0.5, 0.0, 1.0);
    float size = (0.05 + 14.0 * attributes.y) * smoothstep(0.0, 0.8, life);
    vec2 centre = position.xy;
    centre.y += (life - 0.5) * (0.5 + attributes.x);
    centre.x += 0.25 * attributes.z * sin(6.2831853 * (t + attributes.x));
    vCorner = texcoord.xy;
    vStrength = life > 0.0 ? 1.0 : 0.0;
    gl_Position = vec4(centre + texcoord.xy * size * vec2(1.0 / aspect, 1.0), 0.0, 1.0);
    vTexCoord = texcoord.xy * 0.5 + 0.5;
}
