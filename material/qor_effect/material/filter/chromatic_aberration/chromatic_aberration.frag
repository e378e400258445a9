// SPDX-License-Identifier: GPL-3.0-or-later
// Splits the colours along the ray from the centre, as a cheap lens does: a smear over the spectrum
// rather than three ghosts.
#include "color.glsl"
#include "frame.glsl"

uniform float amount;   // shift of red against blue at the corner, in heights of the frame
uniform float falloff;  // 0 the same everywhere, 1 linear from the centre, higher: corners alone

const int kSteps = 12;

void main() {
    vec2 p = ToHeightUnits(vTexCoord);
    float corner = 0.5 * length(vec2(Aspect(), 1.0));
    float distance01 = length(p) / corner;
    vec2 direction = distance01 > 0.0 ? normalize(p) : vec2(0.0);
    vec2 shift = direction * amount * pow(distance01, falloff);
    vec3 sum = vec3(0.0);
    vec3 weights = vec3(0.0);
    vec3 alphas = vec3(0.0);
    for (int k = 0; k < kSteps; ++k) {
        float t = (float(k) + 0.5) / float(kSteps);  // 0 red .. 1 blue
        vec3 w = max(1.0 - abs(vec3(t, t - 0.5, t - 1.0)) * 2.0, 0.0);
        vec4 c = Input0(FromHeightUnits(p + shift * (0.5 - t)));
        sum += w * c.rgb;
        alphas += w * c.a;
        weights += w;
    }
    alphas /= weights;  // where one colour has moved over the border the place is covered
    fragColor = vec4(sum / weights, max(alphas.r, max(alphas.g, alphas.b)));
}
