// SPDX-License-Identifier: GPL-3.0-or-later
// What particles share in their vertex shaders. The first one is the clip behind the others.
#include "frame.glsl"

// The quad of the first particle, over the whole frame; true when this is it.
bool IsBackdrop(vec2 corner) {
    vTexCoord = 0.5 * corner + 0.5;
    gl_Position = vec4(corner, 0.0, 1.0);
    return gl_VertexID < 6;
}

// A square round a place in heights of the frame; `size` is half of its side.
void PutSquare(vec2 place, vec2 corner, float size) {
    gl_Position = vec4(2.0 * (place + corner * size) / vec2(Aspect(), 1.0), 0.0, 1.0);
}

// The clip round a place (y up), of a few points `radius` (heights of the frame) away: single pixels
// flicker.
vec4 ClipRound(vec2 uv, float radius) {
    vec2 d = vec2(radius / Aspect(), radius);
    return 0.25 * (textureLod(uInput0, uv + vec2(d.x, d.y), 0.0) +
                   textureLod(uInput0, uv + vec2(-d.x, d.y), 0.0) +
                   textureLod(uInput0, uv + vec2(d.x, -d.y), 0.0) +
                   textureLod(uInput0, uv + vec2(-d.x, -d.y), 0.0));
}
