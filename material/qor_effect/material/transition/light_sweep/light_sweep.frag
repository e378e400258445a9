// SPDX-License-Identifier: GPL-3.0-or-later
// A bar of light passes, and behind it is the second clip.
#include "color.glsl"
#include "transition.glsl"

uniform float angle;  // degrees; where the light goes: 0 right, 90 up
uniform float width;  // of the bar, in heights of the frame
uniform float strength;
uniform int color;
uniform float easing;

void main() {
    vec2 along = vec2(cos(radians(angle)), sin(radians(angle)));
    float half_ = 0.5 * (abs(along.x) * Aspect() + abs(along.y));
    float edge = mix(-half_ - width, half_ + width, Eased(easing));
    float d = dot(ToHeightUnits(vTexCoord), along) - edge;
    vec4 c = mix(Input0(vTexCoord), Input1(vTexCoord), Cover(d, 0.15 * width));
    float light = strength * (0.7 * exp(-pow(d / (0.3 * width), 2.0)) + 0.45 * exp(-abs(d) / (0.6 * width)));
    vec3 rgb = c.rgb + UnpackColor(color) * light;
    float a = max(c.a, min(light, 1.0));
    fragColor = Exact(vec4(min(rgb, a), a));
}
