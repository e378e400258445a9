// SPDX-License-Identifier: GPL-3.0-or-later
// The first clip is turned over like a sheet of paper, rolled about a cylinder.
#include "transition.glsl"

uniform float angle;   // degrees; where the sheet is pulled to: 0 left, 90 down
uniform float radius;  // of the roll, in heights of the frame
uniform float shadow;
uniform float easing;

void main() {
    float t = Eased(easing);
    vec2 to = -vec2(cos(radians(angle)), sin(radians(angle)));
    vec2 p = ToHeightUnits(vTexCoord);
    float half_ = 0.5 * (abs(to.x) * Aspect() + abs(to.y));
    float kPi = 3.1415927;
    // The roll's axis wanders from the far edge past the near one.
    float axis = mix(half_ - 0.04, -half_ - 0.3 * kPi * radius, t);
    float d = dot(p, -to) - axis;  // above 0: behind the axis, where the sheet is gone
    vec4 c = Input1(vTexCoord);
    c.rgb *= 1.0 - shadow * 0.7 * exp(-max(d - radius * 0.3, 0.0) / (0.9 * radius)) * step(0.0, d) * (1.0 - t);
    float pixel = 1.0 / uResolution.y;
    if (d < 0.0) c = Input0(vTexCoord);
    if (abs(d) < radius + pixel) {
        float inRoll = clamp(d / radius, -1.0, 1.0);
        float edge = clamp((radius - d) / pixel + 0.5, 0.0, 1.0);
        if (d >= 0.0) {
            // The part that lifts off the table.
            float lifted = asin(inRoll) * radius;
            vec2 uv = FromHeightUnits(p + to * (d - lifted));
            vec4 front = Input0(clamp(uv, 0.0, 1.0));
            front.rgb *= 1.0 - 0.45 * shadow * inRoll * inRoll;
            c = mix(c, front, Inside(uv) * edge);
            // Its back, on the way round.
            float over = (kPi - asin(inRoll)) * radius;
            vec2 backUv = FromHeightUnits(p + to * (d - over));
            vec4 back = Input0(clamp(backUv, 0.0, 1.0));
            back.rgb = mix(back.rgb, vec3(0.92) * back.a, 0.72) * (1.0 - 0.4 * shadow * inRoll * inRoll);
            c = mix(c, back, InsideSmooth(backUv) * edge);
        }
    }
    if (d < 0.0) {
        // What has come round lies flat over the rest of the sheet.
        float over = kPi * radius - d;
        vec2 backUv = FromHeightUnits(p + to * (d - over));
        vec4 back = Input0(clamp(backUv, 0.0, 1.0));
        back.rgb = mix(back.rgb, vec3(0.92) * back.a, 0.72);
        vec2 out_ = max(abs(backUv - 0.5) - 0.5, 0.0) * vec2(Aspect(), 1.0);
        c.rgb *= 1.0 - 0.45 * shadow * exp(-length(out_) * 22.0) * smoothstep(0.0, 0.05, t);
        c = mix(c, back, InsideSmooth(backUv));
    }
    fragColor = Exact(c);
}
