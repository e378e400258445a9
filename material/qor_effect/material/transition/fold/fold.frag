// SPDX-License-Identifier: GPL-3.0-or-later
// The first clip folds up like a screen to one side and uncovers the second.
#include "transition.glsl"

uniform int count;      // leaves
uniform float shade;
uniform int direction;  // 0 to the left, 1 to the right
uniform float easing;

void main() {
    float t = Eased(easing);
    float leaves = float(clamp(count, 2, 12));
    float left = 1.0 - t;
    float x = direction == 0 ? vTexCoord.x : 1.0 - vTexCoord.x;
    float u = x / max(left, 1e-4);
    float leaf = floor(u * leaves);
    float in_ = fract(u * leaves);
    bool odd = mod(leaf, 2.0) > 0.5;
    float lean = (odd ? 1.0 - in_ : in_) * 0.12 * sin(3.1415927 * t);
    float y = (vTexCoord.y - 0.5) * (1.0 + lean) + 0.5;
    vec2 uv = vec2(direction == 0 ? u : 1.0 - u, y);
    float on = InsideSmooth(uv) * Cover(x - left, 0.0);
    vec4 first = Input0(clamp(uv, 0.0, 1.0));
    first.rgb *= 1.0 - shade * sqrt(t) * (odd ? 0.75 : 0.2 * in_);
    vec4 second = Input1(vTexCoord);
    second.rgb *= 1.0 - 0.5 * shade * exp(-max(x - left, 0.0) * Aspect() * 10.0) * (1.0 - t);
    fragColor = Exact(mix(second, first, on));
}
