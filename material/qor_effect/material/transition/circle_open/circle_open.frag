// SPDX-License-Identifier: GPL-3.0-or-later
// The second clip opens as a circle with a bright rim.
#include "color.glsl"
#include "frame.glsl"
#include "progress.glsl"

uniform float center_x;
uniform float center_y;  // from the top
uniform float softness;  // in heights of the frame
uniform float rim;       // width of the rim, in heights of the frame
uniform int rim_color;

void main() {
    float t = Progress();
    vec2 centre = ToHeightUnits(vec2(center_x, 1.0 - center_y));
    vec2 farthest = abs(centre) + 0.5 * vec2(Aspect(), 1.0);
    float margin = softness + rim;
    float radius = mix(-0.5 * margin, length(farthest) + 0.5 * margin, t);
    float d = length(ToHeightUnits(vTexCoord) - centre);
    float second = 1.0 - smoothstep(radius - softness, radius + max(softness, 0.0001), d);
    vec4 c = mix(Input0(vTexCoord), Input1(vTexCoord), second);
    float line = rim > 0.0 ? 1.0 - smoothstep(0.5 * rim, rim, abs(d - radius)) : 0.0;
    c = Over(vec4(UnpackColor(rim_color), 1.0) * line, c);
    fragColor = t <= 0.0 ? Input0(vTexCoord) : t >= 1.0 ? Input1(vTexCoord) : c;
}
