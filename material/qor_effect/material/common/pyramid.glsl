// SPDX-License-Identifier: GPL-3.0-or-later
// Blurs of any width from a pyramid of ever smaller pictures, for the last shader of a filter of passes
// that reads the clip and, in the slots 1 to 6, the pictures "blur1" to "blur6" of 270, 135, 68, 34, 17
// and 9 rows, each made from the one before by pyramid_down.frag. A wide blur costs what a narrow one
// costs: two of the pictures are read. Smooth enlargement after Sigg and Hadwiger, "Fast Third-Order
// Texture Filtering", GPU Gems 2, chapter 20.

const float kPyramidRows = 270.0;
// Standard deviation of a picture of the pyramid with its enlargement, in its own rows.
const float kPyramidSigma = 0.76;

// Cubic B-spline from four linear readings.
vec4 Enlarged(sampler2D picture, vec2 size, vec2 uv) {
    vec2 at = uv * size - 0.5;
    vec2 f = fract(at);
    vec2 base = floor(at);
    vec2 f2 = f * f;
    vec2 f3 = f2 * f;
    vec2 w0 = (1.0 - f) * (1.0 - f) * (1.0 - f) / 6.0;
    vec2 w1 = (4.0 - 6.0 * f2 + 3.0 * f3) / 6.0;
    vec2 w3 = f3 / 6.0;
    vec2 w2 = 1.0 - w0 - w1 - w3;
    vec2 low = w0 + w1;
    vec2 high = w2 + w3;
    vec2 a = (base - 0.5 + w1 / low) / size;
    vec2 b = (base + 1.5 + w3 / high) / size;
    return low.y * (low.x * texture(picture, a) + high.x * texture(picture, vec2(b.x, a.y))) +
           high.y * (low.x * texture(picture, vec2(a.x, b.y)) + high.x * texture(picture, b));
}

vec4 PyramidPicture(int level, vec2 uv) {
    if (level <= 0) return Input0(uv);
    if (level == 1) return Enlarged(uInput1, Input1Size(), uv);
    if (level == 2) return Enlarged(uInput2, Input2Size(), uv);
    if (level == 3) return Enlarged(uInput3, Input3Size(), uv);
    if (level == 4) return Enlarged(uInput4, Input4Size(), uv);
    if (level == 5) return Enlarged(uInput5, Input5Size(), uv);
    return Enlarged(uInput6, Input6Size(), uv);
}

// The picture blurred by a bell curve of about that standard deviation, in heights of the frame.
vec4 PyramidBlur(vec2 uv, float sigma) {
    float level = log2(max(sigma, 1e-5) * kPyramidRows / kPyramidSigma) + 1.0;
    int lower = clamp(int(floor(level)), 0, 5);
    // Variances add up: the mixture has the one that was asked for.
    float own = sigma * kPyramidRows / kPyramidSigma;
    float part = lower == 0 ? own * own : (own * own / exp2(2.0 * float(lower - 1)) - 1.0) / 3.0;
    return mix(PyramidPicture(lower, uv), PyramidPicture(lower + 1, uv), clamp(part, 0.0, 1.0));
}
