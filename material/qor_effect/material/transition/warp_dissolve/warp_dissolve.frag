// SPDX-License-Identifier: GPL-3.0-or-later
// The first clip is drawn apart like smoke while the second gathers out of it.
#include "noise.glsl"
#include "transition.glsl"

uniform float amount;  // how far places are drawn, in heights of the frame
uniform float scale;   // waves a height
uniform float easing;

vec2 Flow(vec2 p) { return vec2(Fbm(p), Fbm(p + 31.7)) - 0.5; }

void main() {
    float t = Eased(easing);
    vec2 p = ToHeightUnits(vTexCoord);
    vec2 flow = Flow(p * scale) + 0.5 * Flow(p * scale * 2.3 + 11.0);
    vec4 first = Input0(Mirror(FromHeightUnits(p + flow * amount * 2.0 * t)));
    vec4 second = Input1(Mirror(FromHeightUnits(p - flow * amount * 2.0 * (1.0 - t))));
    float order = clamp(0.5 + 1.1 * (Fbm(p * scale * 1.4 + 5.0) - 0.5), 0.0, 1.0);
    fragColor = Exact(mix(first, second, Reveal(order, t, 0.4)));
}
