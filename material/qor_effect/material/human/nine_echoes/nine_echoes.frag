// SPDX-License-Identifier: GPL-3.0-or-later
// The last nine moments of people step out of them in a row, in a colour that turns on the way.
#include "color.glsl"
#include "frame.glsl"

uniform float amount;
uniform int color;        // of the nearest
uniform int color1;       // of the furthest
uniform int color2;       // of their edge
uniform float offset_x;   // from one to the next, in heights of the frame
uniform float offset_y;
uniform float grow;       // of each against the one before it
uniform float tint;       // how much of the colour they take
uniform int both_sides;

const vec2 kFoot = vec2(0.0, -0.5);

vec2 PlaceOf(float age, float side) {
    vec2 p = ToHeightUnits(vTexCoord) - vec2(side * offset_x, offset_y) * age - kFoot;
    return FromHeightUnits(p / (1.0 + grow * age) + kFoot);
}

// A past moment of people, `age` 1 (the nearest) to 9, in its colours.
vec4 Echo(vec4 people, float age) {
    float old = age / 9.0;
    vec3 tone = mix(UnpackColor(color), UnpackColor(color1), old);
    vec3 straight = Straight(people);
    float rim = 4.0 * people.a * (1.0 - people.a);
    vec3 tinted = mix(tone * (0.35 + 0.95 * Luma(straight)), UnpackColor(color2), 0.5 * rim);
    return Premultiplied(mix(straight, tinted, tint), people.a) * (amount * (1.0 - 0.75 * old));
}

// Each moment stands at a slot of its own, and what is chosen by a number would be read nine times.
#define DRAW_ECHO(INPUT, AGE)                                                              \
    {                                                                                      \
        vec2 uv = PlaceOf(AGE, 1.0);                                                       \
        picture = Over(Echo(INPUT(uv) * Inside(uv), AGE), picture);                        \
        if (both_sides == 1) {                                                             \
            uv = PlaceOf(AGE, -1.0);                                                       \
            picture = Over(Echo(INPUT(uv) * Inside(uv), AGE), picture);                    \
        }                                                                                  \
    }

void main() {
    vec4 clip = Input0(vTexCoord);
    vec4 picture = clip;
    DRAW_ECHO(Input2, 9.0)
    DRAW_ECHO(Input3, 8.0)
    DRAW_ECHO(Input4, 7.0)
    DRAW_ECHO(Input5, 6.0)
    DRAW_ECHO(Input6, 5.0)
    DRAW_ECHO(Input7, 4.0)
    DRAW_ECHO(Input8, 3.0)
    DRAW_ECHO(Input9, 2.0)
    DRAW_ECHO(Input10, 1.0)
    float person = smoothstep(0.25, 0.75, Input1(vTexCoord).b);
    fragColor = mix(picture, clip, person);
}
