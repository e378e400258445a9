// SPDX-License-Identifier: GPL-3.0-or-later
// Of up to three layers the nearest shows. A layer's alpha is its nearness: 0 far, 1 near.
void main() {
    vec4 nearest = HasInput0() ? Input0(vTexCoord) : vec4(0.0);
    vec4 other = HasInput1() ? Input1(vTexCoord) : vec4(0.0);
    if (other.a > nearest.a) nearest = other;
    fragColor = nearest;
}
