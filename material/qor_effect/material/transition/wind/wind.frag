// SPDX-License-Identifier: GPL-3.0-or-later
// The first clip is blown away in thin streaks.
#include "noise.glsl"
#include "transition.glsl"

uniform float angle;   // degrees; where the wind blows: 0 to the right, 90 up
uniform float reach;   // length of the streaks, in heights of the frame
uniform float detail;  // streaks a height
uniform float easing;

void main() {
    vec2 along = vec2(cos(radians(angle)), sin(radians(angle)));
    vec2 p = ToHeightUnits(vTexCoord);
    float half_ = 0.5 * (abs(along.x) * Aspect() + abs(along.y));
    float row = dot(p, vec2(-along.y, along.x));
    float streak = 0.65 * ValueNoise(vec2(row * detail, 5.0)) + 0.35 * ValueNoise(vec2(row * detail * 0.27, 9.0));
    float t = Eased(easing);
    float front = mix(-half_ - 0.02, half_ + reach + 0.02, t) - reach * streak;
    float gone = Cover(dot(p, along) - front, 0.02 + 0.08 * reach);
    vec2 blown = vTexCoord - along / vec2(Aspect(), 1.0) * reach * 0.5 * gone * (1.0 - gone);
    fragColor = Exact(mix(Input0(Mirror(blown)), Input1(vTexCoord), gone));
}
