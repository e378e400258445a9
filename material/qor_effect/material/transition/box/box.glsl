// SPDX-License-Identifier: GPL-3.0-or-later
// A cube that carries the two clips. The including file says how near its front comes: `kNearest`.
in vec3 position;
in vec3 normals;
in vec2 texcoord;
uniform mat4 uMVP;
out vec3 vFace;   // normal of the face before any turn
out float vDepth;

// The lid and the floor of the cube are never seen while it turns about the upright: where the including file
// says `kBackdrop`, they are the wall behind it instead.
void main() {
    if (kBackdrop && abs(normals.y) > 0.5) {
        vec2 corner = 2.0 * texcoord - 1.0;
        gl_Position = normals.y > 0.0 ? vec4(corner, 0.99999, 1.0) : vec4(-2.0, -2.0, 0.0, 1.0);
        vTexCoord = texcoord;
        vFace = normals;
        vDepth = -1.0;
        return;
    }
    vec4 p = uMVP * vec4(position, 1.0);
    // The camera's cotangent is 2.41421: with this factor the flat face fills the frame to the pixel.
    p.xy *= kNearest / 2.41421356;
    // The projection keeps no depth. 1 - 1/w is straight in screen space; the near plane is at half a unit.
    p.z = p.w - 1.0;
    gl_Position = p;
    vTexCoord = texcoord;
    vFace = normals;
    vDepth = p.w;
}
