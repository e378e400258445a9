// SPDX-License-Identifier: GPL-3.0-or-later
// Light that leaves a trail: the clip in slot 0, the light of this moment in slot 1, the trail in slot 2; a
// second trail follows with "mirror", and the mask of whom the light comes from.
#include "bolts.glsl"

uniform int uAccum;         // 1 while the trail is drawn, 0 for the picture
uniform float uTicks;       // since the trail was drawn last
uniform float accum_ratio;  // what a tick leaves of the trail
uniform int interval;       // ticks from one print of the light to the next
uniform float motion_x;     // heights of the frame a second, x to the right and y up
uniform float motion_y;
uniform int mirror;
uniform float amount;
uniform float dim;     // how dark the rest of the scene gets
uniform float behind;  // 1: people hide the trail that is behind them

float Seconds() { return uTicks / 25.0; }

// Where the trail at this place, in heights of the frame, was before.
vec2 Origin(vec2 p) { return p - vec2(motion_x, motion_y) * Seconds(); }

// The trail before at such a place; nothing comes in over the borders.
vec4 Before(vec2 p) {
    vec2 uv = FromHeightUnits(p);
    return Input2(uv) * Inside(uv);
}

// The same, spread by `reach` heights of the frame in a tick: by the root of time, whatever the step.
vec4 Spread(vec2 p, float reach) {
    vec2 d = vec2(reach * sqrt(uTicks), 0.0);
    return 0.25 * (Before(p + d) + Before(p - d) + Before(p + d.yx) + Before(p - d.yx));
}

// `keep` of it is left of each tick, and the last of it goes, too: 8 bits would hold it for ever.
vec4 Faded(vec4 c, float keep) { return max(c * pow(keep, uTicks) - 0.75 / 255.0 * uTicks, 0.0); }

// The trail with the light of this moment, when it is time for a print.
vec4 Printed(vec4 trail) {
    float tick = floor(25.0 * global_time + 0.01);
    bool prints = interval <= 1 || mod(tick, float(interval)) < uTicks;
    return prints ? max(trail, Input1(vTexCoord)) : trail;
}

// The picture: what is left of the trail and what shines now, over the clip.
vec4 Shown() {
    float person = mirror == 1 ? Input4(vTexCoord).r : Input3(vTexCoord).r;
    vec3 trail = Input2(vTexCoord).rgb;
    if (mirror == 1) trail = max(trail, Input3(vTexCoord).rgb);
    trail *= (1.0 - behind * person) * min(4.0 * amount, 1.0);
    vec3 now = Input1(vTexCoord).rgb;
    return Lit(Input0(vTexCoord), trail + now * (1.0 - trail), dim * amount, 1.0);
}
