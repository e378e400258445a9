// SPDX-License-Identifier: GPL-3.0-or-later
// Removes noise and keeps edges. The first pass smooths; the second smooths again, but judges what
// belongs together by the first pass's picture, in which the noise no longer speaks. (A joint bilateral
// filter: G. Petschnigg et al., 2004.) Slot 1 of the second pass is the first pass's picture.
#include "blur.glsl"
#include "color.glsl"

uniform float strength;    // how different two places may be and still be mixed
uniform float radius;      // in pixels of a picture 720 high; smaller ones take as many, for noise lies in pixels
uniform float detail;      // how much of what was removed from the edges comes back
uniform int internalType;  // 0 first pass, 1 second

const int kSamples = 24;

// The eye forgives more in colour than in light, and specks of colour are what noise leaves behind.
float Unlike(vec4 away) {
    float light = Luma(away.rgb);
    vec3 tint = away.rgb - light;
    return 2.2 * light * light + 0.3 * dot(tint, tint) + away.a * away.a;
}

// exp(-near - alike): nearness falls to a third at the rim, likeness by the distance of the colours. Two
// loops, since a choice of the sampler inside would read both at each point.
vec4 Smoothed(vec2 reach, float alike) {
    vec4 sum = Input0(vTexCoord);
    float weights = 1.0;
    vec4 centre = internalType == 0 ? sum : Input1(vTexCoord);
    vec2 direction = vec2(1.0, 0.0);
    if (internalType == 0) {
        for (int k = 0; k < kSamples; ++k) {
            float r = DiscRadius(k, kSamples);
            vec4 c = Input0(vTexCoord + r * direction * reach);
            direction = kGoldenTurn * direction;
            float w = exp(alike * Unlike(c - centre) - r * r);
            sum += w * c;
            weights += w;
        }
    } else {
        for (int k = 0; k < kSamples; ++k) {
            float r = DiscRadius(k, kSamples);
            vec2 uv = vTexCoord + r * direction * reach;
            direction = kGoldenTurn * direction;
            float w = exp(alike * Unlike(Input1(uv) - centre) - r * r);
            sum += w * Input0(uv);
            weights += w;
        }
    }
    return sum / weights;
}

void main() {
    vec2 reach = 1.15 * radius * max(uResolution.y / 720.0, 1.0) / uResolution;
    float tolerance = (internalType == 0 ? 0.16 : 0.09) * strength + 0.001;
    vec4 smoothed = Smoothed(reach, -0.5 / (tolerance * tolerance));
    if (internalType == 0) {
        fragColor = smoothed;
        return;
    }
    vec4 noisy = Input0(vTexCoord);
    float edge = smoothstep(0.02, 0.2, length(smoothed.rgb - noisy.rgb));
    fragColor = mix(smoothed, noisy, detail * edge);
}
