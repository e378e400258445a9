// SPDX-License-Identifier: GPL-3.0-or-later
// Outlines as signed distances: below 0 inside, in the unit of `p`.

float HeartDistance(vec2 p) {
    // Two arcs above, two straight sides below; the tip at the origin, about 1.1 high.
    p.x = abs(p.x);
    if (p.y + p.x > 1.0) return length(p - vec2(0.25, 0.75)) - 0.35355339;
    vec2 onSide = p - 0.5 * max(p.x + p.y, 0.0);
    vec2 toTop = p - vec2(0.0, 1.0);
    return sqrt(min(dot(toTop, toTop), dot(onSide, onSide))) * sign(p.x - p.y);
}

// A star or polygon with corners at distance 1; `inner` is the distance of the notches.
float StarDistance(vec2 p, int corners, float inner) {
    float sector = 6.2831853 / float(corners);
    float angle = atan(p.x, p.y);
    float a = abs(mod(angle + 0.5 * sector, sector) - 0.5 * sector);
    vec2 q = length(p) * vec2(sin(a), cos(a));
    vec2 tip = vec2(0.0, 1.0);
    vec2 notch = inner * vec2(sin(0.5 * sector), cos(0.5 * sector));
    vec2 edge = notch - tip;
    vec2 normal = normalize(vec2(-edge.y, edge.x));
    return dot(q - tip, normal) * (dot(-tip, normal) < 0.0 ? 1.0 : -1.0);
}

// 0 circle, 1 heart, 2 star, 3 diamond, 4 hexagon, 5 feather (a leaf), of about `size` as radius.
float ShapeDistance(int shape, vec2 p, float size) {
    vec2 q = p / size;
    float d = length(q) - 1.0;
    if (shape == 1) d = 1.1 * HeartDistance(q / 1.1 + vec2(0.0, 0.55));
    else if (shape == 2) d = StarDistance(q, 5, 0.45);
    else if (shape == 3) d = (abs(q.x) * 1.25 + abs(q.y) - 1.0) * 0.62;
    else if (shape == 4) d = StarDistance(q, 6, 0.8660254);
    else if (shape == 5) d = length(vec2(abs(q.x) + 0.62, q.y * 0.85)) - 1.05;
    return d * size;
}

// How many radii a shape must be large to cover a circle of radius 1.
float ShapeReach(int shape) {
    return shape == 1 ? 2.05 : shape == 2 ? 1.9 : shape == 3 ? 1.25 : shape == 4 ? 1.03 : shape == 5 ? 1.9 : 1.02;
}
