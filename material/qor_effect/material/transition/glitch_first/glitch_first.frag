// SPDX-License-Identifier: GPL-3.0-or-later
// The first clip melts down in columns, its dark places first; under it lies the second.
#include "color.glsl"
#include "easing.glsl"
#include "frame.glsl"
#include "noise.glsl"
#include "progress.glsl"

uniform float amount;   // how far the columns go their own ways
uniform float columns;  // along the width of a frame of 16:9
uniform float minGray;  // darkest and brightest levels of the first clip
uniform float maxGray;

void main() {
    float t = Progress();
    int column = int(floor(vTexCoord.x * Aspect() * 0.5625 * columns));
    float wave = ValueNoise(vec2(float(column) * 0.09, 3.0));
    float own = mix(wave, Hash(column), 0.35);
    // A column starts late by `own`, and has left the frame at the end whatever it started with.
    float fall = EaseInQuad(clamp((t - 0.35 * own * amount) / (1.0 - 0.35 * own * amount), 0.0, 1.0));
    // Dark places run: the column is stretched where the picture is dark.
    vec2 above = vec2(vTexCoord.x, vTexCoord.y + fall * 1.02);
    float gray = Luma(Input0(vec2(vTexCoord.x, min(above.y, 1.0))).rgb);
    float level = clamp((gray - minGray) / max(maxGray - minGray, 0.05), 0.0, 1.0);
    above.y += amount * 0.12 * fall * (1.0 - level);
    float gone = t <= 0.0 ? 0.0 : step(1.0, above.y);
    vec4 melting = Input0(vec2(above.x, min(above.y, 1.0)));
    float split = 0.006 * amount * fall;
    melting.r = Input0(vec2(above.x - split, min(above.y, 1.0))).r;
    melting.rgb = min(melting.rgb, melting.a);
    // A shadow below the edge of what still hangs.
    vec4 second = Input1(vTexCoord);
    float shadow = (1.0 - smoothstep(1.0, 1.08, above.y)) * gone * 0.5 * (1.0 - t);
    fragColor = t >= 1.0 ? second : mix(melting, vec4(second.rgb * (1.0 - shadow), second.a), gone);
}
