// SPDX-License-Identifier: GPL-3.0-or-later
// A shape grows from a place of the frame; the second clip is in it.
#include "shapes.glsl"
#include "transition.glsl"

uniform int shape;       // 0 circle, 1 heart, 2 star, 3 diamond, 4 hexagon, 5 feather
uniform float softness;  // of the border, in heights of the frame
uniform float center_x;  // 0 left, 1 right
uniform float center_y;  // 0 bottom, 1 top
uniform float turn;      // degrees that the shape turns on the way
uniform int closing;      // the shape shrinks around the first clip instead
uniform float easing;

void main() {
    float t = Eased(easing);
    float grown = closing == 1 ? 1.0 - t : t;
    vec2 center = (vec2(center_x, center_y) - 0.5) * vec2(Aspect(), 1.0);
    vec2 corner = vec2(0.5 * Aspect(), 0.5) + abs(center);
    // Squared: areas grow evenly, so that small shapes do not race.
    float size = ShapeReach(shape) * length(corner) * grown;
    vec2 p = Rotate(ToHeightUnits(vTexCoord) - center, radians(turn) * (closing == 1 ? t : 1.0 - t));
    float soft = softness * (1.0 - 0.5 * grown);
    float inside = Cover(ShapeDistance(shape, p, max(size, 1e-4)) + (grown <= 0.0 ? 1.0 : 0.0) - soft * grown, soft);
    fragColor = Exact(mix(Input0(vTexCoord), Input1(vTexCoord), closing == 1 ? 1.0 - inside : inside));
}
