// SPDX-License-Identifier: GPL-3.0-or-later
// Light along the outline of somebody: the clip in slot 0, the lines in slot 1, feathered in slot 2.
#include "bolts.glsl"

uniform float amount;
uniform float dim;      // how dark the rest of the scene gets
uniform float glow;     // strength of the light round the lines
uniform float showSrc;  // 0: the light alone, for whoever draws the clip
uniform int color_r, color_g, color_b;
uniform int color_r1, color_g1, color_b1;

vec3 Tone() { return vec3(color_r, color_g, color_b) / 255.0; }
vec3 SecondTone() { return vec3(color_r1, color_g1, color_b1) / 255.0; }
vec3 Pale(vec3 tone) { return mix(tone, vec3(1.0), 0.75); }

// How much of a place the lines cover, and how near they are: 1 at a line, falling to 0 with the feather.
float Line(vec2 uv) { return Input1(uv).a; }
float Near(vec2 uv) { return 1.0 - exp(-5.0 * glow * Input2(uv).a); }

// The clip with that light on it.
vec4 Shown(vec3 light) { return Lit(showSrc > 0.5 ? Input0(vTexCoord) : vec4(0.0), light, dim, amount); }

// Paint over the clip: `cover` of a colour that may be dark.
vec4 Painted(vec3 paint, float cover) {
    vec4 clip = showSrc > 0.5 ? Input0(vTexCoord) : vec4(0.0);
    clip.rgb *= 1.0 - dim * amount;
    float a = clamp(cover * amount, 0.0, 1.0);
    return Over(vec4(paint * a, a), clip);
}

// Octaves of noise that rise with time.
float Rising(vec2 p, float scale, float speed) {
    return Fbm(vec2(p.x, p.y - speed * global_time) * scale);
}

// What burns at a place: the lines below it, less the higher it is over them, shaken by noise. `height` in
// heights of the frame.
float Flames(float height, float scale, float speed) {
    vec2 p = ToHeightUnits(vTexCoord);
    float heat = 0.0;
    // Each pixel begins at another part of the step, so that no rows are seen.
    float part = fract(52.9829189 * fract(dot(floor(gl_FragCoord.xy), vec2(0.06711056, 0.00583715))));
    for (int k = 0; k < 14; ++k) {
        float up = (float(k) + part) / 14.0;
        vec2 root = p - vec2(0.0, up * height);
        // Tongues: the higher, the narrower, and the further they sway.
        float tongue = Rising(vec2(1.6 * root.x, p.y), scale, speed);
        float sway = (Rising(root + 7.0, 0.7 * scale, speed) - 0.5) * 0.5 * up * height;
        float burns = smoothstep(0.3 + 0.35 * up, 0.45 + 0.35 * up, tongue);
        heat = max(heat, Near(FromHeightUnits(root + vec2(sway, 0.0))) * burns * (1.0 - 0.75 * up));
    }
    return clamp(heat + 0.35 * Near(vTexCoord), 0.0, 1.0);
}

// Red, orange, yellow, white as it gets hotter.
vec3 FireColor(float heat) {
    return vec3(1.0, 0.75, 0.5) * clamp(vec3(2.2 * heat, 2.4 * heat * heat - 0.1, 2.6 * heat * heat * heat - 0.9), 0.0, 1.6);
}

// Cells of a honeycomb without order: x the distance to the nearest point, y to the next nearest.
vec2 Cells(vec2 p, float time) {
    ivec2 home = ivec2(floor(p));
    vec2 best = vec2(8.0);
    for (int j = -1; j <= 1; ++j) {
        for (int i = -1; i <= 1; ++i) {
            ivec2 cell = home + ivec2(i, j);
            vec2 point = vec2(Hash(cell), Hash(cell + 57));
            point = 0.5 + 0.42 * sin(time + 6.2831853 * point);
            float d = distance(p, vec2(cell) + point);
            best = d < best.x ? vec2(d, best.x) : vec2(best.x, min(best.y, d));
        }
    }
    return best;
}

// Points of light, one to a cell at most, that twinkle; `seldom` 0..1 leaves cells empty.
float Sparkles(vec2 p, float seldom, float pace) {
    ivec2 cell = ivec2(floor(p));
    float luck = Hash(cell);
    if (luck < seldom) return 0.0;
    vec2 place = vec2(cell) + 0.25 + 0.5 * vec2(Hash(cell + 19), Hash(cell + 83));
    float d = distance(p, place);
    float twinkle = 0.5 + 0.5 * sin(pace * global_time * (1.0 + luck) + 40.0 * luck);
    float ray = max(0.0, 1.0 - 12.0 * abs(p.x - place.x)) + max(0.0, 1.0 - 12.0 * abs(p.y - place.y));
    return twinkle * twinkle * (exp(-60.0 * d * d) + 0.35 * ray * exp(-9.0 * d));
}
