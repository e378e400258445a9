// SPDX-License-Identifier: GPL-3.0-or-later
// A point of light in a square of -1..1: a hot middle and a halo that ends at the border.
float GlowDot(vec2 p, float core) {
    float r = length(p);
    float halo = max(1.0 - r, 0.0);
    return smoothstep(core * 1.4, core * 0.6, r) + 0.55 * halo * halo * halo;
}

// Light on a picture, premultiplied: covers as much as it shines.
vec4 LightOf(vec3 rgb) {
    vec3 c = clamp(rgb, 0.0, 1.0);
    return vec4(c, max(c.r, max(c.g, c.b)));
}
