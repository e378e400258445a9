// SPDX-License-Identifier: GPL-3.0-or-later
// Soft flakes, a little ragged when they are near enough to tell.
uniform float amount;

in float vFar;
flat in float vTurn;

void main() {
    if (vFar < 0.0) {
        fragColor = Input0(vTexCoord);
        return;
    }
    vec2 p = 2.0 * vTexCoord - 1.0;
    float angle = atan(p.y, p.x) + vTurn;
    float r = length(p) * (1.0 + 0.03 * sin(3.0 * angle) + 0.05 * sin(6.0 * angle + 2.0));
    // The nearest are blurred by their nearness, the farthest by the air.
    float blur = mix(0.9, 0.7, smoothstep(0.0, 0.4, vFar));
    float flake = smoothstep(0.95, 0.95 - blur, r) * mix(0.6, 0.95, smoothstep(0.05, 0.45, vFar)) * mix(1.0, 0.75, vFar);
    fragColor = vec4(vec3(flake), flake) * amount;
}
