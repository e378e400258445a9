// SPDX-License-Identifier: GPL-3.0-or-later
// Blurs red, green and blue each by its own amount. Slot 1 is the feathered picture.
uniform float uEnhance;            // lifts the light of the blurred part
uniform float WholeBlurIntension;  // blur of all three
uniform float RBlurIntension;
uniform float GBlurIntension;
uniform float BBlurIntension;

void main() {
    vec4 sharp = Input0(vTexCoord);
    vec4 soft = Input1(vTexCoord);
    vec3 own = vec3(RBlurIntension, GBlurIntension, BBlurIntension);
    vec3 part = 1.0 - (1.0 - own) * (1.0 - WholeBlurIntension);
    vec3 lifted = min(soft.rgb * (1.0 + uEnhance * soft.rgb), vec3(1.0));
    float alpha = mix(sharp.a, soft.a, max(part.r, max(part.g, part.b)));
    fragColor = vec4(min(mix(sharp.rgb, lifted, part), alpha), alpha);
}
