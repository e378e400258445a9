// SPDX-License-Identifier: GPL-3.0-or-later
// Adds a layer of spread light (slot 1) to a picture (slot 0).
uniform float BoomIntensity;

void main() {
    vec4 picture = Input0(vTexCoord);
    vec4 light = Input1(vTexCoord) * BoomIntensity;
    float a = picture.a + min(light.a, 1.0) * (1.0 - picture.a);
    fragColor = vec4(min(picture.rgb + light.rgb * (1.0 - picture.rgb), vec3(a)), a);
}
