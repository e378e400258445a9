// SPDX-License-Identifier: GPL-3.0-or-later
// A glowing line, mirrored about the middle, that swings with the sound's spectrum.
#include "color.glsl"
#include "frame.glsl"

uniform float height;    // of a full swing, in heights of the frame
uniform float position;  // of the line, from the top
uniform float width;     // of the line, in heights of the frame
uniform float glow;
uniform int color;

const float kPiece = 0.004;  // length of a piece along x, in heights of the frame
const float kReach = 4.0;    // pieces on each side

float ToSegment(vec2 p, vec2 from, vec2 to) {
    vec2 along = to - from;
    float t = clamp(dot(p - from, along) / max(dot(along, along), 1e-12), 0.0, 1.0);
    return length(p - from - t * along);
}

float Swing(float x) {
    // Low tones in the middle, high ones outside; the swing dies at the borders.
    float at = abs(x * 2.0 - 1.0);
    float level = AudioAt(at * at);
    float ripple = sin(x * 60.0 + global_time * 5.0) * 0.5 + sin(x * 37.0 - global_time * 7.0) * 0.5;
    return height * level * ripple * (1.0 - at * at);
}

void main() {
    vec4 c = Input0(vTexCoord);
    float y = vTexCoord.y - (1.0 - position);
    // Distance to short pieces of the curve on both sides: a line of even width where it is steep too.
    float d = 1e9;
    vec2 last = vec2(-kReach * kPiece, Swing(vTexCoord.x - kReach * kPiece / Aspect()));
    for (float k = 1.0 - kReach; k <= kReach; k += 1.0) {
        float dx = k * kPiece;
        vec2 next = vec2(dx, Swing(vTexCoord.x + dx / Aspect()));
        d = min(d, min(ToSegment(vec2(0.0, y), last, next), ToSegment(vec2(0.0, -y), last, next)));
        last = next;
    }
    vec3 colour = UnpackColor(color);
    float line = 1.0 - smoothstep(0.5 * width, width, d);
    float light = glow * (0.25 + 0.75 * audio_intensity) * exp(-d / 0.03) * 0.8;
    vec3 rgb = 1.0 - (1.0 - c.rgb) * (1.0 - min(colour * light, 1.0));
    rgb = mix(rgb, mix(colour, vec3(1.0), 0.65), line);
    fragColor = vec4(rgb, max(c.a, max(line, min(light, 1.0))));
    fragColor.rgb = min(fragColor.rgb, fragColor.a);
}
