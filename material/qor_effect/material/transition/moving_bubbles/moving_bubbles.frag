// SPDX-License-Identifier: GPL-3.0-or-later
// Bubbles open the second clip. Slot 2 is the swarm.
#include "easing.glsl"
#include "frame.glsl"
#include "progress.glsl"

uniform float refraction;
uniform float shine;

void main() {
    float t = Progress();
    vec4 swarm = Input2(vTexCoord);
    float cover = clamp(swarm.r, 0.0, 1.0);
    // What no bubble has reached opens at the end.
    float rest = EaseInOutQuad(clamp((t - 0.72) / 0.28, 0.0, 1.0));
    float second = t <= 0.0 ? 0.0 : max(cover, rest);
    vec2 slope = (swarm.gb / max(swarm.a, 0.001) - 0.5) * 2.0 * cover * (1.0 - rest);
    vec2 bend = slope * 0.06 * refraction * vec2(1.0 / Aspect(), 1.0);
    vec4 c = mix(Input0(vTexCoord), Input1(clamp(vTexCoord - bend, 0.0, 1.0)), second);
    float rim = smoothstep(0.55, 1.0, length(slope));
    float spot = smoothstep(0.35, 0.0, length(slope - vec2(-0.35, 0.4))) * step(0.001, cover);
    float light = shine * (0.35 * rim + 0.5 * spot) * (1.0 - rest) * step(0.0001, t);
    fragColor = vec4(min(c.rgb + light * c.a, c.a), c.a);
}
