// SPDX-License-Identifier: GPL-3.0-or-later
// Two lines of light as one layer.
void main() {
    vec4 a = Input0(vTexCoord);
    vec4 b = Input1(vTexCoord);
    fragColor = vec4(a.rgb + b.rgb * (1.0 - a.rgb), a.a + b.a * (1.0 - a.a));
}
