// SPDX-License-Identifier: GPL-3.0-or-later
// Stars with thin rays flare up where the picture has its sharpest lights.
#include "color.glsl"
#include "star_points.glsl"

uniform int rays;
uniform float angle;  // degrees, counter-clockwise
uniform int color;

vec3 Twinkle(vec2 p, float life, int own) {
    float r = length(p);
    float turn = atan(p.y, p.x) - radians(angle);
    float half_step = 3.14159265 / float(clamp(rays, 2, 12));
    // Angle to the nearest ray, as a width in radii of the star.
    float off = abs(mod(turn + half_step, 2.0 * half_step) - half_step);
    float across = r * sin(min(off, 1.5707963));
    float ray = exp(-across * 26.0) * pow(max(1.0 - r, 0.0), 2.2);
    float core = exp(-r * r * 55.0) + 0.25 * exp(-r * 7.0) * (1.0 - r);
    vec3 tone = UnpackColor(color);
    return life * (mix(tone, vec3(1.0), 0.6) * core + tone * ray);
}

void main() { fragColor = WithStars(Input0(vTexCoord)); }
