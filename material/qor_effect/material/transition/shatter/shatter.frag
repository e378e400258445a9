// SPDX-License-Identifier: GPL-3.0-or-later
// The first clip breaks like glass: its pieces turn and fall, the second is behind it.
#include "noise.glsl"
#include "transition.glsl"

uniform int count;    // pieces a height of the frame
uniform float speed;  // of their fall
uniform float turn;   // degrees
uniform float easing;

const int kReach = 2;  // how many cells around a place pieces are looked for in

vec2 Seed(ivec2 cell) { return vec2(Hash(cell), Hash(cell + 917)); }

// Cell of the piece that a place of the whole pane belongs to, and how far its border is.
ivec2 PieceAt(vec2 q, out float border) {
    ivec2 home = ivec2(floor(q));
    ivec2 best = home;
    float nearest = 9.0;
    float second = 9.0;
    for (int y = -1; y <= 1; ++y) {
        for (int x = -1; x <= 1; ++x) {
            ivec2 cell = home + ivec2(x, y);
            float d = length(vec2(cell) + Seed(cell) - q);
            if (d < nearest) { second = nearest; nearest = d; best = cell; }
            else second = min(second, d);
        }
    }
    border = second - nearest;
    return best;
}

void main() {
    float t = Eased(easing);
    float cells = float(clamp(count, 3, 24));
    vec2 p = ToHeightUnits(vTexCoord);
    vec4 c = Input1(vTexCoord);
    c.rgb *= 0.55 + 0.45 * t;
    float covered = 0.0;
    // Pieces fall by at most their own reach before they have faded: look only around the place.
    for (int y = 0; y <= 2 * kReach; ++y) {
        for (int x = -1; x <= 1; ++x) {
            ivec2 cell = ivec2(floor(p * cells)) + ivec2(x, y - 1);
            vec2 middle = (vec2(cell) + Seed(cell)) / cells;
            float late = 0.45 * length(middle) / (0.5 * length(vec2(Aspect(), 1.0))) + 0.1 * Hash(cell + 31);
            float own = clamp((t - late * 0.7) / (1.0 - late * 0.7), 0.0, 1.0);
            vec2 fall = vec2(0.25 * (Hash(cell + 77) - 0.5), -1.0) * own * own * speed * float(kReach) / cells * 2.0;
            float angle = radians(turn) * own * (Hash(cell + 5) - 0.5) * 2.0;
            float size = 1.0 - 0.9 * own;
            vec2 back = Rotate((p - middle - fall) / max(size, 0.05), -angle) + middle;
            float border;
            if (PieceAt(back * cells, border) != cell) continue;
            float edge = clamp(border / cells * uResolution.y * size * 0.5 + (own > 0.0 ? 0.0 : 1.0), 0.0, 1.0);
            float fade = 1.0 - smoothstep(0.75, 1.0, own);
            vec4 piece = Input0(FromHeightUnits(back));
            piece.rgb *= 1.0 - 0.35 * own;
            piece.rgb += 0.25 * own * (1.0 - own) * piece.a * step(border, 0.05);
            vec2 uv = FromHeightUnits(back);
            float a = edge * fade * Inside(uv) * (1.0 - covered);
            c = mix(c, min(piece, vec4(piece.a)), a);
            covered = max(covered, edge * fade * Inside(uv));
        }
    }
    fragColor = Exact(c);
}
