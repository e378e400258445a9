// SPDX-License-Identifier: GPL-3.0-or-later
// Easing of a progress t in 0..1; every curve keeps 0 and 1.

float EaseInQuad(float t) { return t * t; }
float EaseOutQuad(float t) { return t * (2.0 - t); }
float EaseInOutQuad(float t) { return t < 0.5 ? 2.0 * t * t : 1.0 - 2.0 * (1.0 - t) * (1.0 - t); }
float EaseInOutCubic(float t) {
    float u = 1.0 - t;
    return t < 0.5 ? 4.0 * t * t * t : 1.0 - 4.0 * u * u * u;
}
