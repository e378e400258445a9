// SPDX-License-Identifier: GPL-3.0-or-later
// The first clip burns like paper: a charred, glowing edge eats its way across.
#include "color.glsl"
#include "noise.glsl"
#include "transition.glsl"

uniform float detail;  // of the edge, waves a height of the frame
uniform float glow;
uniform float width;   // of the charred edge
uniform int color;
uniform float easing;

void main() {
    float t = Eased(easing);
    vec2 p = ToHeightUnits(vTexCoord);
    float paper = 0.7 * Fbm(p * detail) + 0.3 * Fbm(p * detail * 3.1 + 9.0);
    float order = clamp(0.62 * paper + 0.38 * vTexCoord.y, 0.0, 1.0);
    float edge = mix(0.2 - width, 0.86, t);
    float ahead = order - edge;  // below 0: burnt through
    float burnt = 1.0 - smoothstep(-0.004, 0.004, ahead);
    float charred = 1.0 - smoothstep(0.0, width, ahead);
    float ember = exp(-pow(ahead / (0.22 * width), 2.0)) * glow;
    float flicker = 0.75 + 0.5 * ValueNoise(vec2(p.x * 20.0, p.y * 20.0 - 6.0 * global_time));
    vec4 first = Input0(vTexCoord);
    first.rgb *= 1.0 - 0.92 * charred * charred;
    vec4 c = mix(first, Input1(vTexCoord), burnt);
    vec3 fire = UnpackColor(color) * ember * flicker + vec3(1.0, 0.85, 0.5) * pow(ember, 3.0) * 0.4;
    float a = max(c.a, min(ember, 1.0));
    fragColor = Exact(vec4(min(c.rgb + fire, a), a));
}
