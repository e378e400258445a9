// SPDX-License-Identifier: GPL-3.0-or-later
// Letters fall from above, bounce and are squeezed where they land.
#include "letters.glsl"

// 1 to 0 with three bounces.
float Fall(float t) {
    const float k = 7.5625;
    if (t < 1.0 / 2.75) return 1.0 - k * t * t;
    float u = t < 2.0 / 2.75 ? t - 1.5 / 2.75 : t < 2.5 / 2.75 ? t - 2.25 / 2.75 : t - 2.625 / 2.75;
    float height = t < 2.0 / 2.75 ? 0.75 : t < 2.5 / 2.75 ? 0.9375 : 0.984375;
    return 1.0 - k * u * u - height;
}

void main() {
    float a = Away();
    float height = Fall(1.0 - a);
    float squeeze = a * (1.0 - a) * exp(-18.0 * height);
    vec2 p = TurnedAt(Place(), Foot(), 0.0, vec2(1.0 + 1.2 * squeeze, 1.0 - 1.4 * squeeze));
    Put(p + vec2(0.0, 2.6 * height), clamp(6.0 * (1.0 - a), 0.0, 1.0));
}
