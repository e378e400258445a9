// SPDX-License-Identifier: GPL-3.0-or-later
// The picture as a card in space. The camera stands where the untouched card fills the frame.
#include "frame.glsl"

uniform float rotate_x, rotate_y, rotate_z;  // degrees
uniform float position_x, position_y;        // in heights of the frame; y up
uniform float position_z;                    // towards the camera
uniform float scale;

const float kEye = 1.2071068;  // distance of a camera of 45 degrees from a card one high

mat3 Turn() {
    vec3 a = radians(vec3(rotate_x, rotate_y, rotate_z));
    vec3 c = cos(a);
    vec3 s = sin(a);
    mat3 x = mat3(1, 0, 0, 0, c.x, s.x, 0, -s.x, c.x);
    mat3 y = mat3(c.y, 0, -s.y, 0, 1, 0, s.y, 0, c.y);
    mat3 z = mat3(c.z, s.z, 0, -s.z, c.z, 0, 0, 0, 1);
    return z * y * x;
}

void main() {
    // In the card's own space: where does the ray through this pixel meet the plane z = 0?
    mat3 back = transpose(Turn());
    vec3 centre = vec3(position_x, position_y, position_z);
    vec3 eye = back * (vec3(0.0, 0.0, kEye) - centre);
    vec3 ray = back * vec3(ToHeightUnits(vTexCoord), -kEye);
    float t = abs(ray.z) > 0.00001 ? -eye.z / ray.z : -1.0;
    vec2 uv = FromHeightUnits((eye + t * ray).xy / scale);
    vec2 slope = max(fwidth(uv), 0.000001);
    vec2 cover = clamp(min(uv, 1.0 - uv) / slope + 0.5, 0.0, 1.0);
    fragColor = t > 0.0 ? Input0(uv) * cover.x * cover.y : vec4(0.0);
}
