// SPDX-License-Identifier: GPL-3.0-or-later
// What has moved lingers and fades.
uniform float amount;

void main() {
    fragColor = mix(Input0(vTexCoord), Input1(vTexCoord), amount);
}
