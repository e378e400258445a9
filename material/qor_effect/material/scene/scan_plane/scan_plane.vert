// SPDX-License-Identifier: GPL-3.0-or-later
// The quad covers the frame; what the plane is goes to the pixels.
in vec4 position;  // corner of the plane: x and y half of its side, z its shift
in vec2 texcoord;

flat out vec2 vPlane;  // half of the side, shift

void main() {
    vTexCoord = texcoord;
    vPlane = vec2(abs(position.x), position.z);
    gl_Position = vec4(2.0 * texcoord - 1.0, 0.0, 1.0);
}
