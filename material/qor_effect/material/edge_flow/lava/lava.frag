// SPDX-License-Identifier: GPL-3.0-or-later
// A river of lava: a glowing stream under a crust that drifts and cracks.
#include "edge_flow.glsl"

void main() {
    vec2 p = ToHeightUnits(vTexCoord);
    float stream = smoothstep(0.25, 0.6, Near(vTexCoord) + 0.3 * (Fbm(p * 14.0) - 0.5));
    vec2 flow = vec2(0.05 * sin(2.0 * p.y), -0.06) * global_time;
    vec2 plates = Cells((p + flow) * 20.0, 0.8 * global_time);
    float crack = smoothstep(0.35, 0.0, plates.y - plates.x);
    float heat = 0.28 + 0.9 * crack + 0.3 * (Fbm((p + 2.0 * flow) * 9.0) - 0.5);
    vec4 body = Painted(clamp(FireColor(heat), 0.0, 1.0), stream);
    float air = Near(vTexCoord) * (1.0 - stream);
    body.rgb += vec3(0.9, 0.25, 0.05) * air * amount * max(body.a - body.rgb, 0.0);
    fragColor = body;
}
