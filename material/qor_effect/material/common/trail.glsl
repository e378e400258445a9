// SPDX-License-Identifier: GPL-3.0-or-later
// The trail that people leave behind them, for the looks of the afterimage. Slots: clip, trail, with
// `mirror` 1 the trail to the other side, the present shape, the person mask.
#include "color.glsl"
#include "frame.glsl"

#include "light_over.glsl"

uniform int mirror;
uniform float uTime;  // ticks of 1/25 s

float Seconds() { return uTime / 25.0; }

// Premultiplied; its alpha is 1 at the people and falls evenly to 0 at the end of the trail.
vec4 Trail(vec2 uv) { return Input1(uv) * Inside(uv); }
vec4 OtherTrail(vec2 uv) { return mirror == 1 ? Input2(uv) * Inside(uv) : vec4(0.0); }

// How much of a place is a person now.
float PersonNow(vec2 uv) {
    float cover = mirror == 1 ? texture(uInput4, uv).b : texture(uInput3, uv).b;
    return smoothstep(0.25, 0.75, cover);
}

// The frame: people of the clip before `layer` (premultiplied), the clip behind it.
vec4 BehindPeople(vec4 clip, vec4 layer) {
    return mix(Over(layer, clip), clip, PersonNow(vTexCoord));
}
// The same for a layer of light, which also stands out from what is bright already.
vec4 LightBehindPeople(vec4 clip, vec3 light) {
    return mix(LightOver(clip, light), clip, PersonNow(vTexCoord));
}
