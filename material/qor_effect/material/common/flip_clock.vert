// SPDX-License-Identifier: GPL-3.0-or-later
// Pages of a flip clock: from back to front the whole frame, which comes last and alone; the card behind a
// page; the two halves that lie; and the leaf that falls from the upper half to the lower.
#include "frame.glsl"

in vec3 position;   // x, y in -1..1, z the sheet
in vec2 uPagePos;   // index and number of pages

uniform float General_speed;
uniform float General_size;
uniform float center_x, center_y;
uniform int uComposed;  // 0 the pages, 1 the whole
uniform int sSecond, sMinute, sTotalTime, sCount;

out vec2 vCard;            // place on the page, -1..1
flat out int vSheet;       // 0 the whole, 1 card, 2 page
flat out int vPage;        // 0 hours, 1 minutes, 2 seconds
flat out float vNext;      // 1 shows the digits that come next
out float vLight;

// How far the leaf of a page has fallen, 0..1: in the last third of the second before a change.
float Fallen(int page) {
    bool turns = sTotalTime > 0 && (page == 2 || (sSecond == 0 && (page == 1 || sMinute == 0)));
    float t = clamp((fract(global_time * General_speed) - 0.62) / 0.38, 0.0, 1.0);
    return turns && General_speed > 0.0 ? t * t * (1.0 + 0.4 * t * (1.0 - t)) : 0.0;
}

void main() {
    int pages = clamp(int(uPagePos.y), 1, 3);
    vPage = int(uPagePos.x) + 3 - pages;
    vCard = position.xy;
    vLight = 1.0;
    vNext = 0.0;
    vTexCoord = 0.5 * position.xy + 0.5;
    bool upper = (gl_VertexID / 6) % 2 == 0;
    if (position.z < -3.5 || uComposed == 1) {
        vSheet = 0;
        bool once = position.z < -3.5 && uComposed == 1 && uPagePos.x < 0.5;
        gl_Position = once ? vec4(position.xy, 0.0, 1.0) : vec4(2.0, 2.0, 0.0, 1.0);
        return;
    }
    float side = min(0.62 * General_size, 0.94 * General_size * Aspect() / (1.08 * float(pages)));
    vec2 centre = vec2((uPagePos.x - 0.5 * float(pages - 1)) * 1.08 * side + center_x, center_y);
    float fallen = Fallen(vPage);
    vSheet = 2;
    vec3 place = vec3(position.xy, 0.0);
    if (position.z < -2.5) {
        vSheet = 1;
        place.xy = position.xy * 1.06 - vec2(0.0, 0.015);
    } else if (position.z < -1.5) {
        vNext = upper ? 1.0 : 0.0;
        // What lies under the leaf is in its shade.
        float shade = upper ? 1.0 - fallen : fallen > 0.5 ? 2.0 * fallen - 1.0 : 0.0;
        vLight = fallen > 0.0 ? 1.0 - 0.45 * shade : 1.0;
        if (upper && fallen <= 0.0) vNext = 0.0;
    } else {
        // One leaf: the upper half until it stands on edge, then its back, the lower half.
        float angle = fallen * 3.14159265;
        bool shown = upper ? fallen < 0.5 : fallen >= 0.5;
        vNext = upper ? 0.0 : 1.0;
        float turn = upper ? angle : angle - 3.14159265;
        place.yz = position.y * vec2(cos(turn), sin(turn));
        vLight = upper ? 1.0 - 0.35 * sin(angle) : 1.0 + 0.12 * sin(angle);
        if (!shown || fallen <= 0.0) {
            gl_Position = vec4(2.0, 2.0, 0.0, 1.0);
            return;
        }
    }
    float w = 1.0 - 0.22 * place.z;
    vec2 at = (centre * w + 0.5 * side * place.xy) * vec2(2.0 / Aspect(), 2.0);
    gl_Position = vec4(at, 0.0, w);
}
