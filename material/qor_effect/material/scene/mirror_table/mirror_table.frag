// SPDX-License-Identifier: GPL-3.0-or-later
// A mirrored picture on a table, apart from the clip by a gap, that fades into the table's colour.
#include "reflection.glsl"

uniform float amount;
uniform float strength;
uniform vec4 adjustLine;  // where the mirrored picture begins
uniform vec4 tmpLine;     // where it has faded

void main() {
    vec4 clip = Input0(vTexCoord);
    float gap = Below(adjustLine.xy, baseLine);
    float fades = max(Below(tmpLine.xy, adjustLine), 1e-4);
    float depth = Below(vTexCoord, adjustLine);
    // The mirror lies in the middle of the gap.
    vec2 at = FromHeightUnits(ToHeightUnits(vTexCoord) - FloorDown() * (2.0 * Below(vTexCoord, baseLine) - gap));
    vec4 seen = Input0(Mirror(at));
    float left = 1.0 - clamp(depth / fades, 0.0, 1.0);
    float mirror = strength * left * left * Beneath(vTexCoord, adjustLine);
    vec4 table = mix(vec4(Tint(), 1.0) * clip.a, seen, mirror);
    fragColor = mix(clip, table, amount * Beneath(vTexCoord, baseLine));
}
