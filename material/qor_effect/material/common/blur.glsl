// SPDX-License-Identifier: GPL-3.0-or-later

// Points spread evenly over a disc, without sine and cosine for each: begin with a direction as long as
// the disc's radius; point k is `DiscRadius(k, count) * direction`, and after each the direction turns by
// the golden angle: `direction = kGoldenTurn * direction`.
const mat2 kGoldenTurn = mat2(-0.7373688, 0.6754903, -0.6754903, -0.7373688);
float DiscRadius(int k, int count) { return sqrt((float(k) + 0.5) / float(count)); }

float Gaussian(float d, float sigma) {
    return exp(-d * d / (2.0 * sigma * sigma));
}
