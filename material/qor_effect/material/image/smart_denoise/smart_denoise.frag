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

const int kReach = 3;

vec4 Guide(vec2 uv) { return internalType == 0 ? Input0(uv) : Input1(uv); }

void main() {
    vec2 step = vec2(radius / float(kReach) * max(uResolution.y / 720.0, 1.0)) / uResolution;
    float tolerance = (internalType == 0 ? 0.16 : 0.09) * strength + 0.001;
    vec4 centre = Guide(vTexCoord);
    vec4 sum = vec4(0.0);
    float weights = 0.0;
    for (int y = -kReach; y <= kReach; ++y) {
        for (int x = -kReach; x <= kReach; ++x) {
            vec2 uv = vTexCoord + vec2(x, y) * step;
            float near = Gaussian(length(vec2(x, y)), 2.0);
            float alike = Gaussian(length(Guide(uv) - centre), tolerance);
            float w = near * alike;
            sum += w * Input0(uv);
            weights += w;
        }
    }
    vec4 smoothed = sum / weights;
    if (internalType == 0) {
        fragColor = smoothed;
        return;
    }
    vec4 noisy = Input0(vTexCoord);
    float edge = smoothstep(0.02, 0.2, length(smoothed.rgb - noisy.rgb));
    fragColor = mix(smoothed, noisy, detail * edge);
}
