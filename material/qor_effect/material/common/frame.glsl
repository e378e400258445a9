// SPDX-License-Identifier: GPL-3.0-or-later
// Places in the frame. "Height units" have the centre of the frame at 0 and the frame's height as 1, so
// that a size looks the same at every resolution and shape.

float Aspect() { return uResolution.x / uResolution.y; }
vec2 ToHeightUnits(vec2 uv) { return (uv - 0.5) * vec2(Aspect(), 1.0); }
vec2 FromHeightUnits(vec2 p) { return p / vec2(Aspect(), 1.0) + 0.5; }

// 1 inside the frame, 0 outside.
float Inside(vec2 uv) {
    vec2 s = step(vec2(0.0), uv) * step(uv, vec2(1.0));
    return s.x * s.y;
}

// The same with soft borders, for a copy of somebody whom the frame cuts: no straight edges in mid-air.
float FadeAtBorder(vec2 uv) {
    vec2 s = smoothstep(vec2(0.0), vec2(0.05), uv) * smoothstep(vec2(0.0), vec2(0.05), 1.0 - uv);
    return s.x * (uv.y < 0.5 ? step(0.0, uv.y) : s.y);
}

vec2 Rotate(vec2 p, float radians) {
    float c = cos(radians);
    float s = sin(radians);
    return vec2(c * p.x - s * p.y, s * p.x + c * p.y);
}

// Scale that makes a picture of `size` cover the frame, keeping its shape.
vec2 CoverUv(vec2 uv, vec2 size) {
    float picture = size.x / size.y;
    vec2 scale = picture > Aspect() ? vec2(Aspect() / picture, 1.0) : vec2(1.0, picture / Aspect());
    return (uv - 0.5) * scale + 0.5;
}

// Folds a place into the frame by mirroring at its borders.
vec2 Mirror(vec2 uv) { return 1.0 - abs(1.0 - mod(uv, 2.0)); }
