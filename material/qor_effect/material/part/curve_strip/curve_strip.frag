// SPDX-License-Identifier: GPL-3.0-or-later
// Draws one curve into a strip: the column is the input value, the colour the output value.
uniform samplerBuffer controlPoints;  // knot, control, control, knot, ... last knot
uniform int pointsNums;               // knots

float Cubic(float a, float b, float c, float d, float t) {
    float u = 1.0 - t;
    return u * u * u * a + 3.0 * u * u * t * b + 3.0 * u * t * t * c + t * t * t * d;
}

void main() {
    float x = (gl_FragCoord.x - 0.5) / 255.0;
    int last = pointsNums - 1;
    // Outside the first and the last knot the curve goes on level.
    float y = x <= ArrayAt(controlPoints, 0).x ? ArrayAt(controlPoints, 0).y
                                               : ArrayAt(controlPoints, 3 * last).y;
    for (int segment = 0; segment < min(last, 256); ++segment) {
        vec2 a = ArrayAt(controlPoints, 3 * segment).xy;
        vec2 d = ArrayAt(controlPoints, 3 * segment + 3).xy;
        if (x < a.x || x > d.x) continue;
        vec2 b = ArrayAt(controlPoints, 3 * segment + 1).xy;
        vec2 c = ArrayAt(controlPoints, 3 * segment + 2).xy;
        float low = 0.0;
        float high = 1.0;
        for (int k = 0; k < 24; ++k) {  // halving finds t to 1e-7: x grows with t on a tone curve
            float middle = 0.5 * (low + high);
            if (Cubic(a.x, b.x, c.x, d.x, middle) < x) low = middle;
            else high = middle;
        }
        y = Cubic(a.y, b.y, c.y, d.y, 0.5 * (low + high));
        break;
    }
    fragColor = vec4(vec3(clamp(y, 0.0, 1.0)), 1.0);
}
