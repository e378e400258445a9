// SPDX-License-Identifier: GPL-3.0-or-later
// A portrait lens: sharp people, the background in discs. People lend it none of their colour.
#include "color.glsl"
#include "person.glsl"

uniform float blur;        // radius in heights of the frame
uniform float highlights;  // how much lights weigh more, so that they become discs of their own

const int kSamples = 48;
const float kLeast = 0.004;  // weight of a place within the people, for a disc that has no other

void main() {
    vec4 clip = Input0(vTexCoord);
    float person = Person(vTexCoord);
    if (blur * uResolution.y < 0.5 || person > 0.99) {
        fragColor = clip;
        return;
    }
    vec2 p = ToHeightUnits(vTexCoord);
    vec2 direction = vec2(blur, 0.0);
    vec4 sum = vec4(0.0);
    float weights = 0.0;
    for (int k = 0; k < kSamples; ++k) {
        vec2 at = clamp(FromHeightUnits(p + DiscRadius(k, kSamples) * direction), 0.0, 1.0);
        vec4 c = Input0(at);
        float light = max(c.r, max(c.g, c.b));
        light *= light;
        float weight = max(1.0 - 1.6 * Person(at), kLeast) * (1.0 + 12.0 * highlights * light * light * light);
        sum += weight * c;
        weights += weight;
        direction = kGoldenTurn * direction;
    }
    // The mask's edge is soft on both sides of the people's: the blur begins at its middle.
    fragColor = mix(sum / weights, clip, smoothstep(0.15, 0.65, person));
}
