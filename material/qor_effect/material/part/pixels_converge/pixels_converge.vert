// SPDX-License-Identifier: GPL-3.0-or-later
// Pixels spiral in from a cloud and settle at their places.
#include "pixel_particles.glsl"

void main() {
    vec2 home = Home();
    float flight = FlightOf(home);
    vec2 place = 0.5 * home * vec2(Aspect(), 1.0);
    float left = pow(1.0 - flight, 2.0);
    float angle = 6.2831853 * Own(1) + 2.6 * left;
    float reach = uAmount / 50.0 * (0.15 + 0.75 * Own(2)) * left;
    place += reach * vec2(cos(angle), sin(angle)) + 0.1 * left * vec2(-1.0, 0.35);
    float cover = smoothstep(0.0, 0.25, flight) * (flight < 1.0 ? 1.0 : 0.0);
    PutPixel(place, cover, mix(0.5, 1.0, flight));
}
