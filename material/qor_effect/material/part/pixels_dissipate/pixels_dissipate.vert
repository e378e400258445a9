// SPDX-License-Identifier: GPL-3.0-or-later
// Pixels lift off one after the other and are blown up and away.
#include "pixel_particles.glsl"

void main() {
    vec2 home = Home();
    float flight = FlightOf(home);
    vec2 place = 0.5 * home * vec2(Aspect(), 1.0);
    float way = flight * flight * uAmount / 50.0;
    vec2 gust = vec2(ValueNoise(place * 6.0 + 1.7 * flight), ValueNoise(place * 6.0 + 41.0 - 1.7 * flight)) - 0.5;
    float side = uReverse == 1 ? -1.0 : 1.0;
    place += way * (vec2(0.35 * side, 0.22) * (0.4 + 1.2 * Own(1)) + 0.8 * gust + 0.12 * (vec2(Own(2), Own(3)) - 0.5));
    float cover = flight > 0.0 ? 1.0 - flight * flight : 0.0;
    PutPixel(place, cover, mix(1.0, 0.45, flight));
}
