// SPDX-License-Identifier: GPL-3.0-or-later
// A page of a book turns about the middle of the frame: the second clip is on its back and below it.
#include "transition.glsl"

uniform float eye;  // its distance, in heights of the frame
uniform float shade;
uniform float easing;

void main() {
    float t = Eased(easing);
    vec2 p = ToHeightUnits(vTexCoord);
    float half_ = 0.5 * Aspect();
    float s = sin(3.1415927 * t);
    float c = cos(3.1415927 * t);
    // The page's point u (0 at the spine) lies at (u c, -u s) from the plane of the frame, towards the eye.
    float bottom = c * eye + p.x * s;
    float u = abs(bottom) < 1e-4 ? -1.0 : p.x * eye / bottom;
    float depth = (eye - u * s) / eye;
    bool front = t < 0.5;
    vec2 onPage = vec2(u, p.y * depth);
    vec2 uv = FromHeightUnits(vec2(front ? u : -u, onPage.y));
    float in_ = u >= 0.0 && u <= half_ && depth > 0.02 ? 1.0 : 0.0;
    float edge = clamp((0.5 - abs(uv.y - 0.5)) / max(fwidth(uv.y), 1e-6) + 0.5, 0.0, 1.0) *
                 clamp((half_ - u) * uResolution.y + 0.5, 0.0, 1.0);
    vec4 page = front ? Input0(clamp(uv, 0.0, 1.0)) : Input1(clamp(uv, 0.0, 1.0));
    page.rgb *= 1.0 - shade * 0.7 * s * (front ? 1.0 : 0.6);
    vec4 below = p.x < 0.0 ? Input0(vTexCoord) : Input1(vTexCoord);
    float dark = shade * 0.6 * s * exp(-abs(p.x) * 3.0) * (p.x * c > 0.0 ? 1.0 : 0.35);
    below.rgb *= 1.0 - dark;
    fragColor = Exact(mix(below, page, in_ * edge));
}
