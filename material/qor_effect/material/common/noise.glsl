// SPDX-License-Identifier: GPL-3.0-or-later
// Hashes from integers, so that every driver gives the same numbers.

uint HashUint(uint x) {
    x ^= x >> 16;
    x *= 0x7feb352du;
    x ^= x >> 15;
    x *= 0x846ca68bu;
    return x ^ (x >> 16);
}

// 0..1 from lattice points.
float Hash(ivec2 p) { return float(HashUint(uint(p.x) + HashUint(uint(p.y))) >> 8) / 16777216.0; }
float Hash(ivec3 p) {
    return float(HashUint(uint(p.x) + HashUint(uint(p.y) + HashUint(uint(p.z)))) >> 8) / 16777216.0;
}
float Hash(int n) { return float(HashUint(uint(n)) >> 8) / 16777216.0; }

// Smooth noise, 0..1, one cell per unit.
float ValueNoise(vec2 p) {
    ivec2 cell = ivec2(floor(p));
    vec2 f = fract(p);
    f = f * f * (3.0 - 2.0 * f);
    return mix(mix(Hash(cell), Hash(cell + ivec2(1, 0)), f.x),
               mix(Hash(cell + ivec2(0, 1)), Hash(cell + ivec2(1, 1)), f.x), f.y);
}

// Five octaves of ValueNoise, 0..1.
float Fbm(vec2 p) {
    float sum = 0.0;
    float weight = 0.5;
    for (int octave = 0; octave < 5; ++octave) {
        sum += weight * ValueNoise(p);
        p = p * 2.03 + 17.0;
        weight *= 0.5;
    }
    return sum / 0.96875;  // the sum of the weights
}
