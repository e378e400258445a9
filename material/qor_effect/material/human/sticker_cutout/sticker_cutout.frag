// SPDX-License-Identifier: GPL-3.0-or-later
// People cut out of paper with a border left round them, stuck on a poster whose rays turn slowly.
#include "color.glsl"
#include "person.glsl"

uniform float amount;
uniform float border;  // of the paper, in heights of the frame
uniform float shadow;
uniform float backdrop;  // opacity of the poster; the clip is below
uniform float speed;     // turns of the rays in ten seconds
uniform int border_color;
uniform int color;
uniform int second_color;

const float kTurn = 6.2831853;
const float kRays = 12.0;
const float kDots = 46.0;  // of the raster in a height of the frame
const vec2 kFall = vec2(0.008, -0.012);

vec3 Poster(vec2 p) {
    p.y += 0.08;
    float radius = length(p);
    float way = fract(kRays * (atan(p.y, p.x) / kTurn + 0.1 * speed * global_time));
    // Distance to the edges of a ray, in pixels.
    float edge = (0.25 - abs(way - 0.5)) * radius * kTurn / kRays * uResolution.y;
    float ray = clamp(edge + 0.5, 0.0, 1.0);
    // Towards the border a raster of dots takes over.
    vec2 cell = Rotate(p, 0.5) * kDots;
    float size = 0.62 * smoothstep(0.25, 1.05, radius);
    float raster = clamp((size - length(fract(cell) - 0.5)) * uResolution.y / kDots + 0.5, 0.0, 1.0);
    raster *= smoothstep(0.02, 0.06, size);
    vec3 first = UnpackColor(color);
    vec3 second = UnpackColor(second_color);
    vec3 tone = mix(mix(first, vec3(1.0), 0.12), mix(first, second, 0.42), ray);
    return mix(tone, second, 0.8 * raster);
}

void main() {
    vec4 clip = Input0(vTexCoord);
    // The mean over a disc grows the people and rounds their corners as scissors do.
    float around = PersonAround(vTexCoord, 1.45 * border, 32);
    float inside = around > 0.0 ? SmoothPerson(vTexCoord) : 0.0;
    float paper = border * uResolution.y < 0.5 ? inside : smoothstep(0.08, 0.16, around);
    vec2 caster = vTexCoord - kFall / vec2(Aspect(), 1.0);
    float fallen = smoothstep(0.05, 0.75, PersonAround(caster, border + 0.012, 16));

    vec4 ground = Over(Premultiplied(Poster(ToHeightUnits(vTexCoord)), backdrop), clip);
    ground.rgb *= 1.0 - shadow * fallen;
    vec4 sheet = Premultiplied(UnpackColor(border_color), paper);
    vec4 sticker = mix(sheet, Over(WithoutBackground(vTexCoord, inside), sheet), inside);
    fragColor = mix(clip, Over(sticker, ground), amount);
}
