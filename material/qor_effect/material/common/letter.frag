// SPDX-License-Identifier: GPL-3.0-or-later
// A piece of the text's picture, as much as its vertex shader shows of it.
in float vShown;
in float vAbove;

void main() {
    float above = clamp(vAbove / max(fwidth(vAbove), 1e-6) + 0.5, 0.0, 1.0);
    fragColor = Input0(vTexCoord) * vShown * above;
}
