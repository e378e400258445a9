// SPDX-License-Identifier: GPL-3.0-or-later
// Each clip flows by the brightness of the other, as if one grew out of the other.
#include "color.glsl"
#include "transition.glsl"

uniform float strength;  // way of the brightest places, in heights of the frame
uniform float easing;

vec2 Slope(vec2 uv, bool first) {
    // Differences over a fortieth of the height: the large forms, not their grain.
    vec2 d = vec2(0.025 / Aspect(), 0.025);
    vec3 w = vec3(0.2126, 0.7152, 0.0722);
    if (first) {
        return vec2(dot(Input0(uv + vec2(d.x, 0.0)).rgb - Input0(uv - vec2(d.x, 0.0)).rgb, w),
                    dot(Input0(uv + vec2(0.0, d.y)).rgb - Input0(uv - vec2(0.0, d.y)).rgb, w));
    }
    return vec2(dot(Input1(uv + vec2(d.x, 0.0)).rgb - Input1(uv - vec2(d.x, 0.0)).rgb, w),
                dot(Input1(uv + vec2(0.0, d.y)).rgb - Input1(uv - vec2(0.0, d.y)).rgb, w));
}

void main() {
    float t = Eased(easing);
    vec2 p = ToHeightUnits(vTexCoord);
    vec4 first = Input0(Mirror(FromHeightUnits(p + Slope(vTexCoord, false) * strength * t)));
    vec4 second = Input1(Mirror(FromHeightUnits(p + Slope(vTexCoord, true) * strength * (1.0 - t))));
    fragColor = Exact(mix(first, second, t));
}
