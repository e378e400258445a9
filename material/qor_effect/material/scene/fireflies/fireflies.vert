// SPDX-License-Identifier: GPL-3.0-or-later
// Fireflies roam about their places on winding ways, each lighting up now and then.
#include "particle.glsl"

in vec4 position;   // place, and a number of the fly's own
in vec3 texcoord;   // corner, and the fly's number

uniform float amount;
uniform float size;  // of the nearest, in heights of the frame
uniform float roam;  // heights of the frame
uniform float speed;

flat out float vLight;  // below 0 the clip

void main() {
    vLight = -1.0;
    if (IsBackdrop(texcoord.xy)) return;
    float own = position.w;
    float t = global_time * speed * mix(0.35, 0.8, own) + 100.0 * own;
    vec2 way = vec2(sin(t) + 0.5 * sin(2.3 * t + 1.7) + 0.25 * sin(5.1 * t), cos(0.8 * t + 0.6) + 0.5 * sin(1.9 * t));
    vec2 place = 0.5 * position.xy * vec2(Aspect(), 1.0) + 0.5 * roam * mix(0.3, 1.0, own) * way;
    float pulse = 0.5 + 0.5 * sin(global_time * speed * (1.2 + 1.6 * fract(own * 53.0)) + 80.0 * own);
    vLight = 0.08 + 0.92 * smoothstep(0.25, 0.9, pulse);
    float near = mix(0.35, 1.0, 0.5 + 0.5 * position.z);
    PutSquare(place, texcoord.xy, amount > 0.0 ? size * near : 0.0);
}
