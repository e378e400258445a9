// SPDX-License-Identifier: GPL-3.0-or-later
// A crown of five points, seen a little from below, so that its rim bows upwards in the middle.
#include "color.glsl"
#include "sticker.glsl"

uniform int color;
uniform int jewels;

const float kHalf = 1.35;    // half of its width
const float kBand = 0.34;    // height of the band
const float kPoint = 0.95;   // height of the points above the band
const int kPoints = 5;

vec4 Disc(vec2 p, vec2 center, float radius, vec3 tone) {
    vec2 d = (p - center) / radius;
    vec3 lit = tone * (0.75 + 0.35 * dot(d, vec2(-0.5, 0.7)));
    lit += 0.75 * exp(-14.0 * dot(d - vec2(-0.35, 0.4), d - vec2(-0.35, 0.4)));
    return Premultiplied(lit, Fill((length(d) - 1.0) * radius));
}

float StickerReach() { return 3.2; }

vec4 Sticker(vec2 p) {
    float across = clamp(p.x / kHalf, -1.0, 1.0);
    float bow = 0.16 * (1.0 - across * across);
    float up = p.y + 0.6 - bow;  // above the lower rim

    // Points stand on a cylinder: those at the sides are narrower.
    float turn = asin(across) / 3.14159265 + 0.5;
    float phase = fract(turn * float(kPoints));
    float point = 1.0 - abs(2.0 * phase - 1.0);
    float top = kBand + kPoint * (0.18 + 0.82 * point);

    // Distance to the slanting edges is shorter than the way up to them.
    float slope = 2.0 * kPoint * float(kPoints) / (3.14159265 * kHalf * max(sqrt(1.0 - across * across), 0.2));
    float edge = max((up - top) / sqrt(1.0 + slope * slope), max(-up, abs(p.x) - kHalf));

    vec3 gold = UnpackColor(color);
    float shine = cos(across * 1.45) * 0.55 + 0.35;
    shine += 0.45 * exp(-30.0 * (across + 0.42) * (across + 0.42));
    shine -= 0.12 * smoothstep(0.0, 0.9, up - kBand);
    vec3 metal = gold * shine + vec3(1.0, 0.95, 0.8) * 0.25 * smoothstep(0.95, 1.25, shine);
    // Rims of the band and a dark outline.
    float rim = min(abs(up - kBand), abs(up - 0.05));
    metal *= 0.72 + 0.28 * smoothstep(0.0, 0.05, rim);
    metal *= 0.55 + 0.45 * smoothstep(0.0, 0.07, -edge);
    vec4 crown = Premultiplied(metal, Fill(edge));

    vec3 jewel = UnpackColor(jewels);
    for (int i = 0; i < kPoints; ++i) {
        float angle = ((float(i) + 0.5) / float(kPoints) - 0.5) * 3.14159265;
        float x = kHalf * sin(angle);
        float lift = 0.16 * cos(angle) * cos(angle) - 0.6;
        crown = Over(Disc(p, vec2(x, lift + kBand + kPoint), 0.13, gold), crown);
        float width = 0.12 * cos(angle) + 0.02;
        vec2 squeezed = vec2((p.x - x) * 0.14 / width, p.y - lift - 0.5 * kBand);
        crown = Over(Disc(squeezed, vec2(0.0), 0.1, jewel), crown);
    }
    return crown;
}

void main() { fragColor = WithStickers(2.7, 0.0); }
