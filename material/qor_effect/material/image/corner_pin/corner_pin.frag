// SPDX-License-Identifier: GPL-3.0-or-later
// Pins the four corners of the picture to four places.
uniform mat3 perspective_mat;  // from a place in the frame to its place in the picture, pixels, y down
uniform int is_conv;           // 0: the four places are no proper quad, the picture stays as it is

void main() {
    vec2 size = Input0Size() - 1.0;
    vec2 pixel = vec2(vTexCoord.x, 1.0 - vTexCoord.y) * Input0Size() - 0.5;
    if (is_conv == 0) {
        fragColor = Input0(vTexCoord);
        return;
    }
    vec3 h = perspective_mat * vec3(pixel, 1.0);
    vec2 source = h.xy / h.z;
    // Half a pixel of the border fades out, measured where it is seen.
    vec2 slope = max(fwidth(source), 0.0001);
    vec2 cover = clamp((min(source, size - source) + 0.5) / slope + 0.5, 0.0, 1.0);
    vec2 uv = (source + 0.5) / Input0Size();
    fragColor = h.z > 0.0 ? Input0(vec2(uv.x, 1.0 - uv.y)) * cover.x * cover.y : vec4(0.0);
}
