// SPDX-License-Identifier: GPL-3.0-or-later
// Letters of metal: what one sees of them is the studio.
#include "text_light.glsl"

uniform int face_color;
uniform int side_color;
uniform float roughness;
uniform float brushed;   // scratches along the letters
uniform float hammered;  // dents
uniform float dome;

void main() {
    vec3 n = Normal(dome);
    vec2 grain = vWorld.xy;
    float streak = ValueNoise(vec2(grain.x * 6.0, grain.y * 420.0)) + 0.5 * ValueNoise(vec2(grain.x * 15.0, grain.y * 900.0)) - 0.75;
    n = normalize(n + vec3(0.0, 0.22 * brushed * streak, 0.0));
    vec2 dent = vec2(Fbm(grain * 13.0), Fbm(grain * 13.0 + 70.0)) - 0.5;
    n = normalize(n + vec3(0.9 * hammered * dent, 0.0));
    vec3 eye = ToEye();
    float facing = max(dot(n, eye), 0.0);
    vec3 metal = LinearColor(IsFace() ? face_color : side_color);
    vec3 fresnel = metal + (1.0 - metal) * pow(1.0 - facing, 5.0);
    vec3 seen = Studio(reflect(-eye, n), roughness + 0.35 * brushed) * fresnel;
    seen += 0.25 * metal * Studio(n, 1.0);
    seen *= Contact() * (1.0 + 0.25 * brushed * streak);
    fragColor = Shown(Developed(seen * 1.25), vec3(0.0), 1.0);
}
