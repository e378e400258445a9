// SPDX-License-Identifier: GPL-3.0-or-later
// A clip as a lattice of dots in space (vertex shaders). The first dot gives its quad to the clip, which
// is there in the measure in which the dots are not.
#include "color.glsl"
#include "dot.glsl"
#include "noise.glsl"
#include "particle.glsl"

in vec3 position;  // -1..1 over the frame
in vec2 texcoord;  // corner

uniform mat4 uMVP;
uniform int uCount;           // dots along the longer side
uniform float uParticleSize;  // 1: neighbours touch
uniform float Z_Offset;       // how far light parts come forward

flat out vec4 vDot;  // colour, premultiplied; alpha below 0: the clip
flat out float vPixels;  // radius

// Half of the frame's height at the lattice's distance from the camera.
const float kHalfHeight = 1.40838;

// The dot in the clip (y up), in the middle of its cell.
vec2 DotUv() {
    float along = max(float(uCount), 1.0);
    vec2 cell = Aspect() > 1.0 ? vec2(1.0, Aspect()) : vec2(1.0 / Aspect(), 1.0);
    return 0.5 + 0.5 * position.xy + 0.5 * cell / along;
}

// Half of the distance between two dots, in heights of the frame and in the units of the camera.
float HalfCell() { return 0.5 * max(Aspect(), 1.0) / max(float(uCount), 1.0); }
float HalfStep() { return 2.0 * kHalfHeight * HalfCell(); }

// A dot at `uv` of the frame, `height` in front of it, as a disc that faces the camera.
void PutDot(vec2 uv, vec2 shift, float height, float size) {
    vTexCoord = 0.5 * texcoord + 0.5;
    vec2 place = 2.0 * kHalfHeight * ToHeightUnits(uv) + shift;
    vec4 at = uMVP * vec4(place, height, 1.0);
    vPixels = size * 2.41421356 / max(at.w, 0.05) * 0.5 * uResolution.y;
    at.xy += texcoord * size * DotRoom(vPixels) * 2.41421356;
    at.x /= Aspect();
    at.z = 0.0;  // nothing hides anything: dots add up
    gl_Position = at.w > 0.05 && uCount > 0 ? at : vec4(2.0, 2.0, 0.0, 1.0);
}
