// SPDX-License-Identifier: GPL-3.0-or-later
// Cards leave the picture one after the other, turn about and drift apart in depth.
#include "easing.glsl"
#include "noise.glsl"

in vec4 position;   // place of the card, its own number; the backdrop lies at z = -10
in vec2 direction;
in vec2 texcoord;   // corner of the card, -1..1

uniform mat4 uMVP;
uniform float amount;
uniform float size;      // of a card, in heights of the frame
uniform float spread;
uniform float duration;  // seconds until the last card has left

out vec2 vPlace;     // of the card's middle in the clip
flat out float vOwn;
flat out float vBackdrop;
flat out vec4 vOwnColor;  // of the card's place in the clip
out float vShade;

const float kFar = 8.0;

void main() {
    vTexCoord = 0.5 * texcoord + 0.5;
    vBackdrop = position.z < -5.0 ? 1.0 : 0.0;
    vOwn = position.w;
    vShade = 1.0;
    vOwnColor = vec4(0.0);
    vPlace = vec2(0.5 + 0.5 * position.x, 0.5 - 0.5 * position.y);
    if (vBackdrop > 0.5) {
        gl_Position = vec4(texcoord, 0.9999, 1.0);
        return;
    }
    vOwnColor = textureLod(uInput0, vPlace, 0.0);
    float aspect = uResolution.x / uResolution.y;
    // Each card has its moment in the first two thirds; neighbours differ.
    float since = clamp((global_time / duration - 0.66 * position.w) * 3.0, 0.0, 1.0);
    float gone = since * since * (3.0 - 2.0 * since);
    float drift = max(global_time - 0.66 * position.w * duration, 0.0) / duration;

    vec3 place = vec3(position.x, -position.y, position.z * spread * gone);
    place.xy += 0.35 * spread * direction * drift;
    place.z += 0.25 * spread * drift * direction.y;
    vec3 turn = vec3(direction, position.w - 0.5) * gone * 1.6;
    turn.z += 0.5 * sin(global_time * (0.5 + position.w) + 40.0 * position.w) * gone;

    vec3 corner = vec3(texcoord * vec2(1.0, 0.78), 0.0) * size * smoothstep(0.0, 0.25, since);
    corner *= amount > 0.0 ? 1.0 : 0.0;
    float c = cos(turn.z), s = sin(turn.z);
    corner.xy = vec2(c * corner.x - s * corner.y, s * corner.x + c * corner.y);
    c = cos(turn.x), s = sin(turn.x);
    corner.yz = vec2(c * corner.y, s * corner.y);
    c = cos(turn.y), s = sin(turn.y);
    corner.xz = vec2(c * corner.x + s * corner.z, c * corner.z - s * corner.x);
    vShade = 0.7 + 0.3 * cos(turn.x) * cos(turn.y);

    gl_Position = uMVP * vec4(place + corner * vec3(1.0 / aspect, 1.0, 1.0), 1.0);
    // The camera has no planes of its own: depth is the distance.
    gl_Position.z = (gl_Position.w / kFar * 2.0 - 1.0) * gl_Position.w;
}
