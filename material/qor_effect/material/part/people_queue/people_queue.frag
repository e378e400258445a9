// SPDX-License-Identifier: GPL-3.0-or-later
// People cut out of the clip, premultiplied. Slots: clip, grey mask.
uniform vec4 uBound;  // left, top, right, bottom of the people, y down

void main() {
    vec2 uv = FlipV(vTexCoord);
    vec2 inside = step(uBound.xy - 0.02, uv) * step(uv, uBound.zw + 0.02);
    float cover = smoothstep(0.25, 0.75, Input1(vTexCoord).r) * inside.x * inside.y;
    fragColor = Input0(vTexCoord) * cover;
}
