// SPDX-License-Identifier: GPL-3.0-or-later
// Round dots that look the same at any size of the picture, down to less than a pixel.

// How much larger the square of a dot is than the dot, so that its smooth edge has room.
float DotRoom(float pixels) { return (pixels + 1.0) / max(pixels, 1e-3); }

// How much a dot of a radius of `pixels` covers of a pixel at `p`, -1..1 in that square.
float DotCover(vec2 p, float pixels) {
    float distance = length(p) * (pixels + 1.0);
    return clamp(pixels - distance + 0.5, 0.0, 1.0) * min(4.0 * pixels * pixels, 1.0);
}
