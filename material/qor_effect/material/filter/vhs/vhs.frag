// SPDX-License-Identifier: GPL-3.0-or-later
// A worn video tape: lines that shift, colours that run, noise, a tracking band at the bottom.
#include "color.glsl"
#include "noise.glsl"

uniform float amount;  // all of it
uniform float wobble;  // sideways shift of the lines
uniform float bleed;   // how far the colour runs
uniform float noise;
uniform float lines;   // scan lines

const float kLines = 240.0;  // of the tape's picture

vec3 ToYiq(vec3 c) {
    return vec3(dot(c, vec3(0.299, 0.587, 0.114)), dot(c, vec3(0.596, -0.274, -0.322)),
                dot(c, vec3(0.211, -0.523, 0.312)));
}

vec3 FromYiq(vec3 c) {
    return vec3(dot(c, vec3(1.0, 0.956, 0.621)), dot(c, vec3(1.0, -0.272, -0.647)),
                dot(c, vec3(1.0, -1.106, 1.703)));
}

void main() {
    int frame = int(floor(global_time * 25.0));
    float line = floor(vTexCoord.y * kLines);
    float jitter = Hash(ivec3(int(line), frame, 1)) - 0.5;
    float sway = ValueNoise(vec2(vTexCoord.y * 6.0, global_time * 2.0)) - 0.5;
    // The head switches near the bottom: a band of lines torn sideways.
    float band = smoothstep(0.055, 0.0, vTexCoord.y);
    float shift = wobble * (0.003 * jitter + 0.012 * sway) + band * (0.06 + 0.05 * jitter) * wobble;
    float tear = fract(vTexCoord.y + 0.13 * global_time) - 0.5;
    shift += wobble * 0.03 * jitter * exp(-tear * tear * 676.0);
    shift *= amount;
    vec2 uv = vec2(vTexCoord.x + shift, vTexCoord.y);

    vec4 c = Input0(uv);
    vec3 tape = ToYiq(Straight(c));
    vec2 chroma = vec2(0.0);
    for (int k = 0; k < 8; ++k) {  // the colour signal is slow: it drags to the right
        vec2 at = uv - vec2((float(k) - 1.0) * 0.0075 * bleed, 0.0);
        chroma += ToYiq(Straight(Input0(at))).yz;
    }
    tape.yz = chroma / 8.0 * 1.3;
    // A soft luma with a bright edge behind it.
    float behind = ToYiq(Straight(Input0(uv - vec2(0.006, 0.0)))).x;
    float before = ToYiq(Straight(Input0(uv + vec2(0.003, 0.0)))).x;
    tape.x = mix(tape.x, 0.5 * (tape.x + before), 0.8) + (tape.x - behind) * 0.4;
    // Grain that lies along the lines, in the colour too.
    float column = vTexCoord.x * 190.0 + 7.0 * Hash(ivec3(int(line), frame, 4));
    float grain = mix(Hash(ivec3(int(column), int(line), frame)), Hash(ivec3(int(column) + 1, int(line), frame)),
                      fract(column)) - 0.5;
    tape.x += noise * grain * (0.22 + 0.5 * band);
    tape.yz += noise * 0.12 * vec2(ValueNoise(vec2(vTexCoord.x * 24.0, line * 0.5 + float(frame) * 17.0)) - 0.5,
                                   ValueNoise(vec2(vTexCoord.x * 24.0 + 90.0, line * 0.5 - float(frame) * 13.0)) - 0.5);
    // Drop-outs, and a torn band that wanders through the picture.
    float crease = exp(-tear * tear * 676.0) * wobble;
    float streak = step(0.9965 - 0.35 * crease, Hash(ivec3(int(line), frame, 2))) *
                   step(0.55, ValueNoise(vec2(vTexCoord.x * 9.0 + line, float(frame))));
    tape.x += noise * streak * 0.55;
    tape.yz *= 1.0 - 0.6 * crease;
    vec3 rgb = FromYiq(tape) * vec3(1.03, 0.99, 1.02);
    // With less than two pixels a line the lines would beat against the pixels: an even grey instead.
    float room = smoothstep(kLines, 2.0 * kLines, uResolution.y);
    rgb *= 1.0 - lines * 0.45 * (0.5 + 0.5 * room * cos(vTexCoord.y * kLines * 6.2831853));
    rgb = mix(vec3(0.09, 0.07, 0.13), rgb, 0.86);
    vec4 clean = Input0(vTexCoord);
    fragColor = mix(clean, Premultiplied(rgb, c.a), amount);
}
