// SPDX-License-Identifier: GPL-3.0-or-later
// A wide blur in few samples: passes that halve the picture, then passes that double it again.
// Method: the dual filter of M. Bjorge, "Bandwidth-Efficient Rendering", 2015. The picture of a pass that
// works at a part of the size lies in the bottom left corner of the frame; what is outside stays empty.
uniform int uIterations;
uniform float uOffset;     // distance of the samples in pixels of a picture 720 high
uniform int calLayer;      // 0 down, 1 up, 2 copy
uniform int curIteration;  // of this direction, from 0

// The offset is meant for a picture 720 high, so that others look alike. From about three pixels on, and
// below a third of one, the samples would miss what lies between them or no longer spread.
float Offset() { return clamp(uOffset * uResolution.y / 720.0, 0.35, max(3.0, uOffset)); }

// The part of the frame that a picture halved `times` times takes, a whole number of pixels.
vec2 Extent(int times) { return ceil(uResolution / exp2(float(times))); }

// `pixel` in pixels of a source picture of that extent.
vec4 At(vec2 pixel, vec2 extent) {
    return texture(uInput0, clamp(pixel, vec2(0.5), extent - 0.5) / uResolution);
}

void main() {
    if (calLayer == 2) {
        fragColor = Input0(vTexCoord);
        return;
    }
    bool down = calLayer == 0;
    int sourceHalvings = down ? curIteration : uIterations - curIteration;
    vec2 source = Extent(sourceHalvings);
    vec2 target = Extent(down ? sourceHalvings + 1 : sourceHalvings - 1);
    if (gl_FragCoord.x > target.x || gl_FragCoord.y > target.y) {
        fragColor = vec4(0.0);
        return;
    }
    vec2 at = gl_FragCoord.xy / target * source;
    if (down) {
        float d = Offset();
        fragColor = (4.0 * At(at, source) + At(at + vec2(d, d), source) + At(at + vec2(-d, d), source) +
                     At(at + vec2(d, -d), source) + At(at + vec2(-d, -d), source)) / 8.0;
    } else {
        float d = 0.5 * Offset();
        vec4 axes = At(at + vec2(2.0 * d, 0.0), source) + At(at - vec2(2.0 * d, 0.0), source) +
                    At(at + vec2(0.0, 2.0 * d), source) + At(at - vec2(0.0, 2.0 * d), source);
        vec4 corners = At(at + vec2(d, d), source) + At(at + vec2(-d, d), source) +
                       At(at + vec2(d, -d), source) + At(at + vec2(-d, -d), source);
        fragColor = (axes + 2.0 * corners) / 12.0;
    }
}
