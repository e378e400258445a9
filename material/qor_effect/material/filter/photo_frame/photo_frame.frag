// SPDX-License-Identifier: GPL-3.0-or-later
// The picture as an instant photo that lies on a table.
#include "color.glsl"
#include "frame.glsl"

uniform float amount;
uniform float border;
uniform float bottom;  // of the broad strip
uniform float tilt;    // degrees
uniform int color;
uniform int background;

float BoxDistance(vec2 p, vec2 half_) {
    vec2 d = abs(p) - half_;
    return length(max(d, 0.0)) + min(max(d.x, d.y), 0.0);
}

void main() {
    vec4 clip = Input0(vTexCoord);
    vec2 p = Rotate(ToHeightUnits(vTexCoord), -radians(tilt));
    float pixel = 0.7 / uResolution.y;
    float size = 0.84;
    vec2 half_ = 0.5 * size * vec2(Aspect(), 1.0);
    vec2 card = half_;
    vec2 picture = half_ - vec2(border, 0.5 * (border + bottom));
    vec2 middle = vec2(0.0, 0.5 * (bottom - border));
    float onCard = 1.0 - smoothstep(-pixel, pixel, BoxDistance(p, card) - 0.006);
    float onPicture = 1.0 - smoothstep(-pixel, pixel, BoxDistance(p - middle, picture));
    float shade = exp(-max(BoxDistance(p + vec2(-0.008, 0.014), card), 0.0) * 26.0);
    vec2 uv = (p - middle) / (2.0 * picture);
    // Cover the window of the card, keeping the shape.
    float window = picture.x / picture.y;
    uv *= window > Aspect() ? vec2(1.0, Aspect() / window) : vec2(window / Aspect(), 1.0);
    vec4 c = Input0(clamp(uv + 0.5, 0.0, 1.0));
    float table = 0.9 + 0.1 * sin(vTexCoord.y * 260.0) * sin(vTexCoord.y * 31.0);
    vec3 below = UnpackColor(background) * table * (1.0 - 0.55 * shade);
    vec4 drawn = vec4(below, 1.0);
    drawn = mix(drawn, vec4(UnpackColor(color) * (0.97 + 0.03 * p.y), 1.0), onCard);
    drawn = mix(drawn, Over(c, vec4(UnpackColor(color) * 0.9, 1.0)), onPicture);
    fragColor = mix(clip, drawn, amount);
}
