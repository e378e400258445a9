// SPDX-License-Identifier: GPL-3.0-or-later
// The outline of now (slot 0) over the fading ones of before (slot 1), which may drift and grow. What
// comes out is white, as strong as it is young.
#include "frame.glsl"

uniform float uBlend;   // how long an outline stays, in fifteenths of a second to a third of it
uniform float drift_x;  // heights of the frame a second
uniform float drift_y;
uniform float grow;     // of its size a second
uniform float elapsed;  // seconds since the picture before; 0 when a frame is drawn again

const int kBetween = 6;

// Where what is here now was so many seconds ago.
vec2 Before(float seconds) {
    vec2 p = ToHeightUnits(vTexCoord) - vec2(drift_x, drift_y) * seconds;
    return FromHeightUnits(p * exp(-grow * seconds));
}

void main() {
    vec2 at = Before(elapsed);
    // Eight bits keep no small losses: what is nearly gone goes for good.
    float past = Input1(at).a * exp(-15.0 * elapsed / max(uBlend, 0.5)) - 7.5 / 255.0 * elapsed;
    // An outline goes from frame to frame without a gap.
    float now = 0.0;
    for (int k = 0; k < kBetween; ++k) {
        float part = elapsed * float(k) / float(kBetween);
        now = max(now, Input0(Before(part)).a * exp(-15.0 * part / max(uBlend, 0.5)));
    }
    fragColor = vec4(max(now, past * Inside(at)));
}
