// SPDX-License-Identifier: GPL-3.0-or-later

// Points of a disc of radius 1, spread evenly by the golden angle; i in 0..count-1.
vec2 DiscPoint(int i, int count, float turn) {
    float radius = sqrt((float(i) + 0.5) / float(count));
    float angle = float(i) * 2.39996323 + turn;  // the golden angle in radians
    return radius * vec2(cos(angle), sin(angle));
}

float Gaussian(float d, float sigma) {
    return exp(-d * d / (2.0 * sigma * sigma));
}
