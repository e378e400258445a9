// SPDX-License-Identifier: GPL-3.0-or-later
// A block of lights that breathes and turns, lit by a point light that circles it.
in vec4 position;  // steps from the middle, and a number of the light's own
in vec2 texcoord;  // corner

uniform mat4 uMVP;
uniform mat4 uModel;
uniform int uParticleInX, uParticleInY, uParticleInZ;
uniform float size;    // 1: neighbours touch
uniform float spin;    // degrees a second
uniform float breath;
uniform vec3 uLightingPoint0AmbientColor;
uniform vec3 uLightingPoint0DiffuseColor;
uniform vec3 uLightingPoint0SpecularColor;

flat out vec3 vLight;

void main() {
    vTexCoord = 0.5 * texcoord + 0.5;
    float most = float(max(max(uParticleInX, uParticleInY), max(uParticleInZ, 1)));
    float aspect = uResolution.x / uResolution.y;
    float unit = 1.05 * min(1.2 * aspect, 1.0) / most;  // upright frames hold it, too
    vec3 place = position.xyz * unit;
    // A wave from the middle outwards.
    float r = length(place);
    place *= 1.0 + 0.22 * breath * sin(1.7 * global_time - 7.0 * r);
    float turn = radians(spin) * global_time;
    place.xz = mat2(cos(turn), -sin(turn), sin(turn), cos(turn)) * place.xz;

    vec3 lamp = 0.85 * vec3(sin(0.9 * global_time), 0.7 * sin(0.6 * global_time + 1.0), cos(0.9 * global_time));
    vec3 to_lamp = lamp - (uModel * vec4(place, 1.0)).xyz;
    float near = dot(to_lamp, to_lamp);
    float glint = 0.6 + 0.4 * sin(global_time * (1.0 + 2.0 * position.w) + 60.0 * position.w);
    vLight = uLightingPoint0AmbientColor + uLightingPoint0DiffuseColor * (0.9 / (1.0 + 3.0 * near)) * glint +
             uLightingPoint0SpecularColor * exp(-7.0 * near);

    vec4 at = uMVP * vec4(place, 1.0);
    vLight *= clamp(2.6 / at.w, 0.5, 1.6) * 0.8;
    at.xy += texcoord * 0.5 * unit * size * (0.7 + 0.6 * glint) * 2.41421356;
    at.x /= aspect;
    at.z = 0.0;
    gl_Position = at.w > 0.05 ? at : vec4(2.0, 2.0, 0.0, 1.0);
}
