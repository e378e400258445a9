// SPDX-License-Identifier: GPL-3.0-or-later
// Brightness as heat: from violet by red to white.
#include "color.glsl"

uniform float amount;
uniform float contrast;
uniform float shift;

vec3 Heat(float t) {
    const vec3 kColors[6] = vec3[](vec3(0.02, 0.0, 0.12), vec3(0.25, 0.0, 0.55), vec3(0.8, 0.05, 0.45),
                                   vec3(0.98, 0.4, 0.08), vec3(1.0, 0.85, 0.2), vec3(1.0, 1.0, 0.92));
    float at = clamp(t, 0.0, 1.0) * 5.0;
    int low = min(int(at), 4);
    return mix(kColors[low], kColors[low + 1], smoothstep(0.0, 1.0, at - float(low)));
}

void main() {
    vec4 c = Input0(vTexCoord);
    vec3 rgb = Straight(c);
    float warm = 0.75 * Luma(rgb) + 0.25 * rgb.r;
    fragColor = Premultiplied(mix(rgb, Heat((warm - 0.5) * contrast + 0.5 + shift), amount), c.a);
}
