// SPDX-License-Identifier: GPL-3.0-or-later
// How strongly the air is bent: a soft ring, torn by noise.
void main() {
    float ring = Input0(vTexCoord).a;
    float noise = Input1(vTexCoord).g;
    // The card ends softly.
    vec2 p = abs(2.0 * vTexCoord - 1.0);
    float inside = smoothstep(1.0, 0.85, max(p.x, p.y));
    fragColor = vec4(clamp(1.7 * ring * (0.45 + 0.9 * noise) * inside, 0.0, 1.0));
}
