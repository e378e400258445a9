// SPDX-License-Identifier: GPL-3.0-or-later
// A disc of light with rings, a grid and a turning beam, tilted in space about a person.
#include "color.glsl"
#include "frame.glsl"
#include "glow_dot.glsl"

uniform float amount;
uniform int color;
uniform vec2 uCenter;   // device space
uniform vec2 uRatioWH;
uniform mat3 uRotMat;

flat in vec2 vPlane;

const float kEye = 3.0;

float Line(float distance, float width) {
    float pixel = max(fwidth(distance), 1e-5);
    return clamp((width - abs(distance)) / pixel + 0.5, 0.0, 1.0) * min(2.0 * width / pixel, 1.0);
}

void main() {
    vec4 clip = Input0(vTexCoord);
    vec2 p = (2.0 * vTexCoord - 1.0 - uCenter) * uRatioWH;
    // The ray through this pixel and the plane, both in the plane's own space.
    vec3 eye = vec3(0.0, 0.0, kEye) * uRotMat;
    vec3 ray = vec3(p, -kEye) * uRotMat;
    float facing = abs(ray.z) < 1e-4 ? 1e-4 : ray.z;
    float t = (vPlane.y - eye.z) / facing;
    vec2 q = (eye + t * ray).xy / max(vPlane.x, 1e-4);
    float r = length(q);
    float angle = atan(q.y, q.x);
    float shown = t > 0.0 ? 1.0 : 0.0;
    float inside = smoothstep(1.0, 0.92, r);
    float rings = Line(r - 0.93, 0.012) + 0.6 * Line(r - 0.62, 0.006) + 0.5 * Line(r - 0.3, 0.006);
    vec2 cell = abs(fract(q * 6.0) - 0.5);
    float grid = 0.35 * (Line(cell.x - 0.5, 0.02) + Line(cell.y - 0.5, 0.02)) * inside;
    float turn = fract((angle - 1.6 * global_time) / 6.2831853);
    float beam = inside * (0.12 + 0.55 * pow(turn, 6.0)) * smoothstep(0.05, 0.3, r);
    float ticks = Line(fract(angle * 36.0 / 6.2831853) - 0.5, 0.08) * smoothstep(0.02, 0.01, abs(r - 0.86)) * 0.8;
    float halo = 0.5 * exp(-14.0 * max(r - 0.93, 0.0)) * smoothstep(0.9, 0.95, r);
    vec3 light = UnpackColor(color) * (rings + grid + beam + ticks + halo) + 0.35 * vec3(rings);
    fragColor = Over(LightOf(light) * (amount * shown * clip.a), clip);
}
