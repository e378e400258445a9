// SPDX-License-Identifier: GPL-3.0-or-later
// How solid letters are lit: a studio of soft boxes that is reckoned, not painted, so that a rough surface sees it as
// soft as it should; and what every material of letters shares.
#include "color.glsl"
#include "frame.glsl"
#include "noise.glsl"

in vec3 vWorld;
in vec3 vNormal;
in vec3 vSurface;
in vec3 vTint;
in float vLetterAlpha;
in float vDepthBelow;

uniform float Env_angle;  // degrees that the studio is turned about the text
uniform float light;      // strength of all of it
uniform float glow_light; // how much of the light glows
uniform int is_boom;
uniform int is_global_boom;

const vec3 kCamera = vec3(0.0, 0.0, 2.4);

vec3 Linear(vec3 c) { return c * c; }
vec3 LinearColor(int rgb) { return Linear(UnpackColor(rgb)); }

// One soft box: its direction, half its size in radians, its edge as sharp as the surface is.
float SoftBox(vec3 d, vec3 toBox, vec2 size, float rough) {
    vec3 right = normalize(cross(vec3(0.0, 1.0, 0.01), toBox));
    vec3 above = cross(toBox, right);
    float front = dot(d, toBox);
    if (front <= 0.0) return 0.0;
    vec2 at = abs(vec2(dot(d, right), dot(d, above)) / front);
    float soft = 0.04 + 1.1 * rough;
    vec2 inside = 1.0 - smoothstep(size - 0.5 * soft, size + soft, at);
    return inside.x * inside.y / (1.0 + 2.0 * rough);
}

// Light that comes from direction `d`.
vec3 Studio(vec3 d, float rough) {
    float a = radians(Env_angle);
    d.xz = mat2(cos(a), sin(a), -sin(a), cos(a)) * d.xz;
    float up = smoothstep(-0.6 - rough, 0.8 + rough, d.y);
    vec3 sum = mix(vec3(0.05, 0.045, 0.05), vec3(0.34, 0.37, 0.42), up);
    float horizon = exp(-abs(d.y + 0.08) * (9.0 - 7.0 * rough));
    sum += vec3(0.20, 0.19, 0.18) * horizon;
    sum += vec3(3.2, 3.0, 2.8) * SoftBox(d, normalize(vec3(-0.55, 0.65, 0.62)), vec2(0.42, 0.30), rough);
    sum += vec3(1.5, 1.7, 2.0) * SoftBox(d, normalize(vec3(0.85, 0.15, 0.50)), vec2(0.16, 0.75), rough);
    sum += vec3(1.2, 1.1, 1.0) * SoftBox(d, normalize(vec3(-0.9, -0.1, 0.35)), vec2(0.12, 0.8), rough);
    sum += vec3(0.9) * SoftBox(d, normalize(vec3(0.1, -0.75, 0.6)), vec2(0.7, 0.10), rough);
    sum += vec3(2.4) * SoftBox(d, normalize(vec3(0.25, 0.5, -0.8)), vec2(0.8, 0.3), rough);
    return sum * light;
}

bool IsFace() { return vSurface.z < 0.5; }
bool IsDecoration() { return vSurface.z > 500.0; }

vec3 ToEye() { return normalize(kCamera - vWorld); }

// The surface's normal. A face is flat: `dome` bends it as if it were slightly arched, so that it catches light.
vec3 Normal(float dome) {
    vec3 n = normalize(vNormal + vec3(0.0, 0.0, 1e-5));
    if (IsFace()) n = normalize(n + vec3(dome * (2.0 * clamp(vSurface.xy, 0.0, 1.0) - 1.0), 0.0) * sign(n.z));
    return n;
}

// Walls get darker towards their back, and every edge reads.
float Contact() {
    if (IsFace()) return 1.0;
    return mix(0.35, 1.0, exp(-9.0 * max(vDepthBelow, 0.0)));
}

// Light to picture, with shoulders where it is very bright.
vec3 Developed(vec3 c) {
    c = max(c, 0.0);
    c = c * (2.51 * c + 0.03) / (c * (2.43 * c + 0.59) + 0.14);
    return sqrt(clamp(c, 0.0, 1.0));
}

// The picture of this pass: the surface, or what of it glows.
vec4 Shown(vec3 surface, vec3 shining, float alpha) {
    alpha *= vLetterAlpha;
    if (IsDecoration()) {
        bool glows = is_boom == 1 || is_global_boom == 1;
        return glows ? vec4(0.0) : vec4(vTint.bgr, 1.0) * vLetterAlpha;
    }
    if (is_boom == 1 || is_global_boom == 1) {
        vec3 lit = clamp(shining + max(surface - 0.85, 0.0) * 2.0, 0.0, 1.0) * glow_light * alpha;
        return vec4(lit, max(lit.r, max(lit.g, lit.b)));
    }
    return vec4(clamp(surface + shining, 0.0, 1.0) * alpha, alpha);
}
