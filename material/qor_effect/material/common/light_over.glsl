// SPDX-License-Identifier: GPL-3.0-or-later
// Light over a premultiplied picture. What is bright already gives way, so that the light keeps its
// colour there.
vec4 LightOver(vec4 clip, vec3 light) {
    float cover = max(light.r, max(light.g, light.b));
    vec3 behind = clip.rgb * (1.0 - 0.85 * cover);
    return vec4(behind + light * (1.0 - behind), clip.a + cover * (1.0 - clip.a));
}
