// SPDX-License-Identifier: GPL-3.0-or-later
#include "color.glsl"

flat in vec4 vGrain;
in vec2 vAlong;

void main() {
    float r = length(vAlong);
    float soft = max(fwidth(r), 0.25);
    fragColor = Premultiplied(vGrain.rgb, vGrain.a * smoothstep(1.0, 1.0 - 2.0 * soft, r));
}
