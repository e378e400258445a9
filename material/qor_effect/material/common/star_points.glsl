// SPDX-License-Identifier: GPL-3.0-or-later
// Lights at the places that the clip's sharpest corners give. A shader gives `vec3 Twinkle(vec2 p, float
// life, int own)`: the light at p (radii of the star, y up) of a star that is `life` bright, 0..1.
#include "frame.glsl"
#include "noise.glsl"

uniform samplerBuffer posArray;  // places in fractions of the frame, y up
uniform int starburstCount;
uniform float size;   // of a star, in heights of the frame
uniform float speed;  // flares a second

const int kMostStars = 100;

vec3 Twinkle(vec2 p, float life, int own);

vec4 WithStars(vec4 clip) {
    vec2 here = ToHeightUnits(vTexCoord);
    vec3 light = vec3(0.0);
    for (int i = 0; i < kMostStars; ++i) {
        if (i >= starburstCount) break;
        vec2 place = ArrayAt(posArray, i).xy;
        vec2 away = here - ToHeightUnits(place);
        // Whatever star stands in a part of the frame keeps its rhythm while its corner moves about.
        ivec2 tile = ivec2(place * 10.0);
        int own = tile.x + 16 * tile.y;
        float reach = size * (0.45 + 0.55 * Hash(own));
        if (max(abs(away.x), abs(away.y)) > reach || length(away) > reach) continue;
        float phase = fract(global_time * speed * (0.6 + 0.8 * Hash(own + 500)) + Hash(own + 900));
        float life = sin(3.14159265 * phase);
        light += Twinkle(away / reach, life * life, own);
    }
    light = clamp(light, 0.0, 1.0);
    float cover = max(light.r, max(light.g, light.b));
    return vec4(clip.rgb + light * (1.0 - clip.rgb), clip.a + cover * (1.0 - clip.a));
}
