// SPDX-License-Identifier: GPL-3.0-or-later
// Letters of something that is no metal: plastic, stone, wood, paper, lava.
#include "text_light.glsl"

uniform int face_color;
uniform int side_color;
uniform int vein_color;   // of what runs through it
uniform int matter;       // 0 plain, 1 stone, 2 wood, 3 paper, 4 lava
uniform float roughness;
uniform float gloss;      // how strong the studio shines on it
uniform float dome;

void main() {
    vec3 n = Normal(dome);
    vec3 base = LinearColor(IsFace() ? face_color : side_color);
    vec3 vein = LinearColor(vein_color);
    vec3 shining = vec3(0.0);
    float rough = roughness;
    vec2 p = IsFace() ? vWorld.xy : vec2(vWorld.x + vWorld.y, vWorld.z * 3.0);
    if (matter == 1) {
        float speckle = Fbm(p * 22.0);
        float crack = smoothstep(0.04, 0.0, abs(Fbm(p * 5.0 + 9.0) - 0.5));
        base = mix(base, vein, smoothstep(0.35, 0.75, speckle)) * (1.0 - 0.55 * crack);
        n = normalize(n + 0.5 * vec3(Fbm(p * 40.0) - 0.5, Fbm(p * 40.0 + 30.0) - 0.5, 0.0));
    } else if (matter == 2) {
        float ring = p.y * 16.0 + 2.2 * Fbm(vec2(p.x * 1.6, p.y * 7.0));
        float grain = 0.5 + 0.5 * sin(6.2831853 * ring);
        float fibre = ValueNoise(vec2(p.x * 14.0, p.y * 320.0));
        base = mix(base, vein, 0.65 * grain * grain + 0.2 * fibre);
        n = normalize(n + vec3(0.0, 0.12 * (fibre - 0.5), 0.0));
    } else if (matter == 3) {
        float fibre = Fbm(p * 90.0);
        base *= 0.94 + 0.1 * fibre;
        n = normalize(n + 0.12 * vec3(fibre - 0.5, Fbm(p * 90.0 + 50.0) - 0.5, 0.0));
    } else if (matter == 4) {
        vec2 q = p * 6.0 + vec2(0.0, -0.12 * global_time);
        float flow = Fbm(q + 1.5 * Fbm(q * 1.3 + 0.15 * global_time));
        float hot = smoothstep(0.16, 0.0, abs(flow - 0.5)) * (0.7 + 0.3 * sin(2.0 * global_time + 9.0 * flow));
        base *= 0.35 + 0.5 * flow;
        shining = mix(Linear(vec3(1.0, 0.25, 0.02)), vec3(1.0, 0.8, 0.3), hot * hot) * hot;
        n = normalize(n + 0.7 * vec3(flow - 0.5, Fbm(q + 20.0) - 0.5, 0.0));
    }
    vec3 eye = ToEye();
    float facing = max(dot(n, eye), 0.0);
    float fresnel = 0.04 + 0.96 * pow(1.0 - facing, 5.0) * (1.0 - rough);
    vec3 key = vec3(1.0, 0.97, 0.92) * max(dot(n, normalize(vec3(-0.4, 0.6, 0.75))), 0.0);
    vec3 seen = base * (0.85 * Studio(n, 1.0) + 0.75 * light * key);
    seen += gloss * (fresnel + 0.06) * Studio(reflect(-eye, n), rough);
    fragColor = Shown(Developed(seen * Contact() * 1.15), sqrt(shining), 1.0);
}
