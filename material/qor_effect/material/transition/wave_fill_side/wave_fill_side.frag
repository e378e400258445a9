// SPDX-License-Identifier: GPL-3.0-or-later
// The second clip rises as a liquid from the left, over the part of the frame that the first clip's picture takes.
#include "color.glsl"
#include "frame.glsl"
#include "progress.glsl"

uniform float wave_height;  // in heights of the frame
uniform float wave_length;  // in heights of the frame
uniform float speed;        // waves a second
uniform int water;          // colour of the foam line

void main() {
    float t = Progress();
    float up = vTexCoord.x * Aspect();
    float along = vTexCoord.y;
    float low = orig_roi.x * Aspect();
    float high = (orig_roi.x + orig_roi.z) * Aspect();
    if (high <= low) {  // an empty picture: the whole frame
        low = 0.0;
        high = Aspect();
    }
    float calm = smoothstep(0.0, 0.12, t) * (1.0 - smoothstep(0.88, 1.0, t));
    float phase = along / wave_length * 6.2831853;
    float run = global_time * speed * 6.2831853;
    float wave = wave_height * calm * (0.65 * sin(phase + run) + 0.35 * sin(1.7 * phase - 1.3 * run + 1.0));
    float back = wave_height * calm * (0.65 * sin(phase * 0.9 - run * 0.8 + 2.0) + 0.35 * sin(2.1 * phase + run));
    float margin = 0.05;
    float level = mix(low - margin, high + margin, t);
    float pixel = 1.0 / uResolution.y;
    float front = 1.0 - smoothstep(level + wave - pixel, level + wave + pixel, up);
    float behind = 1.0 - smoothstep(level + back + 0.02 - pixel, level + back + 0.02 + pixel, up);
    // At the end nothing outside the region is left over.
    float rest = smoothstep(0.96, 1.0, t);
    vec4 c = mix(Input0(vTexCoord), vec4(UnpackColor(water), 1.0), 0.75 * behind * calm);
    c = mix(c, Input1(vTexCoord), max(front, rest));
    float foam = calm * (1.0 - smoothstep(0.0, 0.008, abs(up - level - wave)));
    fragColor = vec4(mix(c.rgb, vec3(c.a), 0.7 * foam), c.a);
}
