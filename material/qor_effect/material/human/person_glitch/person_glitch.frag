// SPDX-License-Identifier: GPL-3.0-or-later
// A broken signal that has hold of the people alone: their colours drift apart, strips of them jump
// aside, lines run through them.
#include "color.glsl"
#include "noise.glsl"
#include "person.glsl"

uniform float strength;
uniform float speed;  // faults a second

// How far the strip of this height stands aside, in heights of the frame. Thin strips lie within
// thick ones.
float Jump(float y, int fault) {
    int thick = int(floor(y * 9.0 + 3.0 * Hash(fault)));
    int thin = int(floor(y * 42.0));
    float far = Hash(ivec3(thick, fault, 1)) - 0.5;
    float little = Hash(ivec3(thin, fault, 2)) - 0.5;
    float jumps = step(0.62, Hash(ivec3(thick, fault, 3)));
    float shakes = step(0.78, Hash(ivec3(thin, fault, 4)));
    return 0.34 * far * jumps + 0.12 * little * shakes;
}

void main() {
    vec4 clip = Input0(vTexCoord);
    int fault = int(floor(global_time * speed));
    // Most of the time a little, now and then a lot.
    float burst = mix(0.35, 1.0, step(0.45, Hash(ivec2(fault / 3, 9))));
    vec2 pixel = vec2(1.0 / Aspect(), 1.0);
    float aside = strength * burst * Jump(vTexCoord.y, fault);
    vec2 split = strength * vec2(0.012 + 0.02 * burst * Hash(ivec2(fault, 5)), 0.004) * pixel;
    vec2 at = vTexCoord - vec2(aside, 0.0) * pixel;

    vec4 picture = clip;
    vec2 places[3] = vec2[](at - split, at, at + split);
    for (int channel = 0; channel < 3; ++channel) {
        vec2 uv = clamp(places[channel], 0.0, 1.0);
        vec4 there = Input0(uv);
        float person = Person(uv) * min(strength * 20.0, 1.0);
        picture[channel] = mix(picture[channel], there[channel], person);
        picture.a = max(picture.a, there.a * person);
    }
    float person = Person(clamp(at, 0.0, 1.0));
    // Lines of the tube, and a brighter one that runs down.
    float lines = 0.5 + 0.5 * sin(vTexCoord.y * 180.0 * 6.2831853);
    float roll = smoothstep(0.06, 0.0, abs(fract(vTexCoord.y + 0.37 * global_time) - 0.5));
    picture.rgb *= 1.0 - strength * person * (0.28 * lines - 0.35 * roll);
    fragColor = vec4(min(picture.rgb, picture.a), picture.a);
}
