// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace kelmo::beauty {

inline constexpr const char* kQuadVertexShader = R"(#version 330 core
out vec2 uv;
void main() {
    uv = vec2((gl_VertexID & 1) * 2, (gl_VertexID >> 1) * 2);
    gl_Position = vec4(uv * 2.0 - 1.0, 0.0, 1.0);
}
)";

/// One pass over the picture. A pixel that nothing is asked of is copied as it is.
inline constexpr const char* kRetouchShader = R"(#version 330 core
in vec2 uv;
out vec4 color;
uniform sampler2D uPicture;
uniform sampler2D uField;   // where the colour of a place comes from, relative, y down
uniform sampler2D uParts;   // skin, eyes, mouth, below the eyes; y down
uniform sampler2D uFolds;   // from nose to mouth
uniform int uMoves;
uniform int uFaces;
uniform float uFaceWidth;   // in heights of the picture
uniform float uSmooth, uWhiten, uRedden, uSharpen, uContrast, uSaturation;
uniform float uBrightEyes, uWhiteTeeth, uDarkCircles, uFoldsOut;

const float kGolden = 2.3999632;
const int kTaps = 28;

float Luma(vec3 c) { return dot(c, vec3(0.2126, 0.7152, 0.0722)); }

// The mean of the colours round a place that are like its own: pores go, edges stay.
vec3 LikeColors(vec2 from, vec3 own, float radius, float likeness) {
    vec2 size = vec2(textureSize(uPicture, 0));
    vec2 unit = vec2(size.y / size.x, 1.0) * radius;
    vec3 sum = own;
    float weights = 1.0;
    for (int k = 0; k < kTaps; ++k) {
        float r = sqrt((float(k) + 0.5) / float(kTaps));
        float a = float(k) * kGolden;
        vec3 c = textureLod(uPicture, from + unit * r * vec2(cos(a), sin(a)), 0.0).rgb;
        vec3 d = (c - own) / likeness;
        float w = 1.0 / (1.0 + dot(d, d) * dot(d, d));
        sum += w * c;
        weights += w;
    }
    return sum / weights;
}

// How much a colour is one of skin, of any tone: red leads, blue trails.
float SkinTone(vec3 c) {
    float warm = c.r - c.b;
    float bright = smoothstep(0.08, 0.2, Luma(c));
    return bright * smoothstep(0.0, 0.08, warm) * smoothstep(-0.06, 0.02, c.r - c.g);
}

vec3 Retouched(vec3 c, vec2 from) {
    vec4 parts = texture(uParts, vec2(from.x, 1.0 - from.y));
    float folds = texture(uFolds, vec2(from.x, 1.0 - from.y)).r;
    float skin = parts.r * SkinTone(c);
    if (uSmooth > 0.0 && skin > 0.004) {
        vec3 even = LikeColors(from, c, 0.045 * uFaceWidth, mix(0.06, 0.13, uSmooth));
        c = mix(c, even, 0.85 * uSmooth * skin);
    }
    float under = max(uDarkCircles * parts.a, uFoldsOut * folds) * SkinTone(c);
    if (under > 0.004) {
        // What is darker than its surroundings rises to them.
        vec3 around = LikeColors(from, c, 0.11 * uFaceWidth, 0.4);
        c = mix(c, max(c, around * 1.06), 0.8 * under);
    }
    if (uWhiten > 0.0) {
        float base = 1.0 + 3.0 * uWhiten;
        vec3 light = log(c * (base - 1.0) + 1.0) / log(base);
        c = mix(c, light, 0.6 * skin);
    }
    c = mix(c, clamp(c * vec3(1.07, 0.97, 0.985) + vec3(0.03, 0.0, 0.008), 0.0, 1.0), uRedden * skin);
    if (uBrightEyes > 0.0) {
        vec3 clear = mix(vec3(Luma(c)), c, 1.15);
        clear = clamp((clear - 0.3) * 1.25 + 0.36, 0.0, 1.0);
        c = mix(c, max(c, clear), uBrightEyes * parts.g);
    }
    if (uWhiteTeeth > 0.0) {
        float spread = max(c.r, max(c.g, c.b)) - min(c.r, min(c.g, c.b));
        float tooth = parts.b * smoothstep(0.22, 0.4, Luma(c)) * (1.0 - smoothstep(0.25, 0.42, spread));
        vec3 white = clamp(vec3(mix(Luma(c), max(c.r, max(c.g, c.b)), 0.6)) * vec3(1.05, 1.05, 1.06), 0.0, 1.0);
        c = mix(c, white, 0.8 * uWhiteTeeth * tooth);
    }
    return clamp(c, 0.0, 1.0);
}

void main() {
    vec2 move = uMoves == 1 ? texture(uField, vec2(uv.x, 1.0 - uv.y)).rg : vec2(0.0);
    vec4 own = texelFetch(uPicture, ivec2(gl_FragCoord.xy), 0);
    vec2 from = uv;
    if (move != vec2(0.0)) {
        from = clamp(uv + vec2(move.x, -move.y), 0.0, 1.0);
        own = textureLod(uPicture, from, 0.0);
    }
    vec3 c = own.rgb;
    if (uFaces == 1) c = Retouched(c, from);
    if (uSharpen > 0.0) {
        vec2 pixel = 1.0 / vec2(textureSize(uPicture, 0));
        vec2 reach = max(pixel, vec2(pixel.x / pixel.y, 1.0) / 720.0);
        vec3 around = 0.25 * (textureLod(uPicture, from + vec2(reach.x, 0.0), 0.0).rgb +
                              textureLod(uPicture, from - vec2(reach.x, 0.0), 0.0).rgb +
                              textureLod(uPicture, from + vec2(0.0, reach.y), 0.0).rgb +
                              textureLod(uPicture, from - vec2(0.0, reach.y), 0.0).rgb);
        c = clamp(c + 0.9 * uSharpen * (own.rgb - around), 0.0, 1.0);
    }
    if (uContrast > 0.0) c = mix(c, c * c * (3.0 - 2.0 * c), 0.7 * uContrast);
    if (uSaturation > 0.0) c = clamp(mix(vec3(Luma(c)), c, 1.0 + 0.6 * uSaturation), 0.0, 1.0);
    // Colours are premultiplied.
    color = vec4(min(c, vec3(own.a)), own.a);
}
)";

}  // namespace kelmo::beauty
