// SPDX-License-Identifier: GPL-3.0-or-later
// The frame runs past like a strip of mirrored pictures and stops on the second clip.
#include "transition.glsl"

uniform float angle;  // degrees; where the strip runs to: 0 left, 90 down
uniform int frames;   // mirrored pictures that pass by
uniform float easing;

void main() {
    float t = Eased(easing);
    vec2 direction = vec2(cos(radians(angle)), sin(radians(angle)));
    direction /= max(abs(direction.x), abs(direction.y));
    float way = 2.0 * float(clamp(frames, 1, 6));
    vec2 place = vTexCoord + direction * way * t;
    float along = dot(place - 0.5, direction) / dot(direction, direction) + 0.5;
    // The strip's second half shows the second clip.
    float second = clamp((along - 0.5 * way - 0.5) * uResolution.y + 0.5, 0.0, 1.0);
    vec2 uv = Mirror(place);
    fragColor = Exact(mix(Input0(uv), Input1(uv), second));
}
