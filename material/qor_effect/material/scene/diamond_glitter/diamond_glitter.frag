// SPDX-License-Identifier: GPL-3.0-or-later
// Cut stones catch the light: small facets flash in turn and split it into colours.
#include "color.glsl"
#include "star_points.glsl"

uniform int color;

vec3 Twinkle(vec2 p, float life, int own) {
    p = Rotate(p, 6.2831853 * Hash(own + 77) + global_time * speed * 0.4);
    // An astroid: four points with hollow sides; a smaller one turned between them.
    vec2 a = sqrt(abs(p));
    vec2 b = sqrt(abs(Rotate(p, 0.78539816)) * 1.9);
    float edge = min(a.x + a.y, b.x + b.y);
    float soft = 1.5 / (uResolution.y * size);
    float body = smoothstep(0.95, 0.95 - max(0.35, soft), edge);
    // Outwards the colours part, as in glass.
    vec3 spectrum = 0.5 + 0.5 * cos(6.2831853 * (length(p) * 1.4 + vec3(0.0, 0.33, 0.67)) + 6.0 * life);
    vec3 tone = mix(UnpackColor(color), spectrum, 0.55 * smoothstep(0.05, 0.5, length(p)));
    float glint = exp(-length(p) * length(p) * 40.0);
    float halo = 0.22 * exp(-length(p) * 5.0) * (1.0 - length(p));
    return life * (tone * (body + halo) + vec3(glint));
}

void main() { fragColor = WithStars(Input0(vTexCoord)); }
