// SPDX-License-Identifier: GPL-3.0-or-later
// A blade of light opens the second clip. Clips in slots 0 and 1, lines in slot 2, feathered in slot 3.
#include "sweep.glsl"

uniform float dim;  // how dark the first clip gets before it goes

void main() {
    float t = Progress();
    if (t <= 0.0 || t >= 1.0) {
        fragColor = t <= 0.0 ? Input0(vTexCoord) : Input1(vTexCoord);
        return;
    }
    // The last of it grows past the frame, whatever the shape.
    vec2 uv = 0.5 + (vTexCoord - 0.5) / (1.0 + 0.25 * smoothstep(0.72, 1.0, t));
    float depth = Depth(uv);
    vec4 old = Input0(vTexCoord);
    old.rgb *= 1.0 - dim * smoothstep(0.0, 0.35, t);
    vec4 fresh = Input1(0.5 + (vTexCoord - 0.5) * mix(0.94, 1.0, smoothstep(0.2, 1.0, t)));
    float fades = smoothstep(0.0, 0.03, t) * (1.0 - smoothstep(0.93, 1.0, t));
    vec3 light = BladeLight(uv, depth, Input2(uv).a, Input3(uv).a);
    fragColor = WithLight(mix(old, fresh, Open(depth)), fades * light);
}
