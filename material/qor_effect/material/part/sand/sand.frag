// SPDX-License-Identifier: GPL-3.0-or-later
#include "color.glsl"

flat in vec4 vGrain;

void main() {
    float r = length(2.0 * vTexCoord - 1.0);
    float soft = max(fwidth(r), 0.1);
    fragColor = Premultiplied(vGrain.rgb, vGrain.a * smoothstep(1.0, 1.0 - 2.0 * soft, r));
}
