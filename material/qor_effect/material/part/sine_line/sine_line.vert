// SPDX-License-Identifier: GPL-3.0-or-later
// A sine wave from side to side, whatever the bends of the line.
uniform float range;   // half of its length, device space
uniform float height;  // of its crests, heights of the frame
uniform float waves;   // crests on the whole way
uniform float flow;    // crests a second
uniform float center_y;

vec2 Bend(vec2 p, float progress) {
    float aspect = uResolution.x / uResolution.y;
    float calm = smoothstep(0.0, 0.06, progress) * smoothstep(0.0, 0.06, 1.0 - progress);
    float phase = 6.2831853 * (waves * progress - flow * global_time);
    return vec2((progress - 0.5) * range * aspect, center_y + calm * height * sin(phase));
}

#include "beam_line_steps.glsl"
