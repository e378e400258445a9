// SPDX-License-Identifier: GPL-3.0-or-later
// Stripes of the second clip shoot in from both sides in turn.
#include "noise.glsl"
#include "transition.glsl"

uniform int count;     // a height of the frame
uniform float angle;   // degrees of the stripes
uniform float spread;  // how uneven their starts are
uniform float easing;

void main() {
    vec2 along = vec2(cos(radians(angle)), sin(radians(angle)));
    vec2 across = vec2(-along.y, along.x);
    vec2 p = ToHeightUnits(vTexCoord);
    float stripes = float(clamp(count, 2, 40));
    float reach = 0.5 * (abs(along.x) * Aspect() + abs(along.y));
    float place = dot(p, across) * stripes + 100.0;
    float own[2];
    // The stripe and its nearer neighbour: the seam between them is one pixel wide.
    float near = floor(place) + (fract(place) > 0.5 ? 1.0 : -1.0);
    for (int k = 0; k < 2; ++k) {
        float stripe = k == 0 ? floor(place) : near;
        float late = fract(stripe * 0.61803) * spread;
        float t = clamp((Progress() - late) / (1.0 - spread), 0.0, 1.0);
        t = mix(t, t * t * (3.0 - 2.0 * t), easing);
        float from = mod(stripe, 2.0) < 0.5 ? 1.0 : -1.0;
        own[k] = Cover(from * dot(p, along) - mix(-reach, reach + 0.002, t), 0.0);
    }
    float toSeam = min(fract(place), 1.0 - fract(place)) / stripes * uResolution.y;
    fragColor = Exact(mix(Input0(vTexCoord), Input1(vTexCoord), mix(own[1], own[0], clamp(toSeam + 0.5, 0.5, 1.0))));
}
