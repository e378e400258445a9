// SPDX-License-Identifier: GPL-3.0-or-later
// A smaller picture of what it reads: four readings that weigh each place by 1 3 3 1 both ways when the
// size is halved.
void main() {
    vec2 d = 0.375 / uResolution;
    fragColor = 0.25 * (Input0(vTexCoord + d) + Input0(vTexCoord - d) + Input0(vTexCoord + vec2(d.x, -d.y)) +
                        Input0(vTexCoord + vec2(-d.x, d.y)));
}
