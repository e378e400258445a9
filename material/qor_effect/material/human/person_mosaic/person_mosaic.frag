// SPDX-License-Identifier: GPL-3.0-or-later
// Squares that nobody is known by: over the people, or over all that is not them.
#include "color.glsl"
#include "person.glsl"

uniform float size;      // edge of a square in heights of the frame; 0 is off
uniform int background;  // 1: the people stay, what is behind them goes

const int kGrid = 5;  // samples along an edge of the square

void main() {
    vec4 clip = Input0(vTexCoord);
    if (size * uResolution.y < 1.0) {
        fragColor = clip;
        return;
    }
    vec2 corner = floor(ToHeightUnits(vTexCoord) / size);
    vec4 sum = vec4(0.0);
    float weights = 0.0;
    float most = 0.0;
    for (int y = 0; y < kGrid; ++y) {
        for (int x = 0; x < kGrid; ++x) {
            vec2 uv = clamp(FromHeightUnits((corner + (vec2(x, y) + 0.5) / float(kGrid)) * size), 0.0, 1.0);
            float person = Person(uv);
            most = max(most, person);
            // A square has the colour of what it hides.
            float weight = (background == 1 ? 1.0 - person : person) + 0.02;
            sum += weight * Input0(uv);
            weights += weight;
        }
    }
    // Whole squares over people, so that no outline is left of them; before a background they keep theirs.
    float cover = background == 1 ? 1.0 - Person(vTexCoord) : smoothstep(0.35, 0.45, most);
    fragColor = mix(clip, sum / weights, cover);
}
