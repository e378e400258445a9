// SPDX-License-Identifier: GPL-3.0-or-later
// Flakes at all distances fall and sway; near ones are large, fast and out of focus.
#include "particle.glsl"

in vec4 position;   // place, and a number of the flake's own
in vec3 texcoord;   // corner, and the flake's number

uniform float amount;
uniform float size;   // of a flake at arm's length, in heights of the frame
uniform float speed;
uniform float wind;   // heights of the frame a second, to the right
uniform float depth;  // 0 all flakes at one distance

out float vFar;  // 0 nearest, 1 farthest; below 0 the clip
flat out float vTurn;

void main() {
    vFar = -1.0;
    vTurn = 0.0;
    if (IsBackdrop(texcoord.xy)) return;
    float own = position.w;
    vFar = mix(0.5, pow(0.5 + 0.5 * position.z, 0.4), depth);
    float away = mix(0.45, 3.6, vFar);
    float side = size * mix(0.7, 1.3, fract(own * 37.0)) / away;
    // Flakes come back in from the other side, out of sight.
    vec2 reach = vec2(Aspect(), 1.0) + 2.0 * side + 0.1;
    vec2 fall = vec2(wind, -0.28 * mix(0.8, 1.2, own)) / away * global_time * speed;
    fall.x += 0.035 / away * sin(global_time * speed * (0.6 + own) + 60.0 * own);
    vec2 place = (fract(0.5 + 0.5 * position.xy + fall / reach) - 0.5) * reach;
    vTurn = 6.2831853 * fract(own * 91.0) + global_time * speed * (own - 0.5);
    PutSquare(place, texcoord.xy, amount > 0.0 ? side : 0.0);
}
