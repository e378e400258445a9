// SPDX-License-Identifier: GPL-3.0-or-later
// Two half boxes that turn about the middle of the frame.
in vec3 position;
in vec3 normals;
in vec2 texcoord;
in vec4 uBoxRotateData;  // degrees about x, y, z
in vec4 uBoxMoveData;
in vec2 uTexMoveData;
uniform mat4 uProj;
out vec3 vFace;
out float vDepth;

mat3 TurnX(float a) { return mat3(1, 0, 0, 0, cos(a), sin(a), 0, -sin(a), cos(a)); }
mat3 TurnY(float a) { return mat3(cos(a), 0, -sin(a), 0, 1, 0, sin(a), 0, cos(a)); }

// The sides along the cut are never seen. That of the first box is the wall behind both instead.
bool IsInnerSide() {
    return normals.x * (1.0 - 2.0 * uBoxMoveData.x) > 0.5 || normals.y * (-1.0 - 2.0 * uBoxMoveData.y) > 0.5;
}

void main() {
    if (IsInnerSide()) {
        bool upright = abs(normals.x) > 0.5;
        vec2 place = upright ? texcoord * vec2(2.0, 1.0) : (texcoord - vec2(0.0, 0.5)) * vec2(1.0, 2.0);
        bool first = upright ? uBoxMoveData.x < 0.5 : uBoxMoveData.y > -0.5;
        gl_Position = first ? vec4(2.0 * place - 1.0, 0.99999, 1.0) : vec4(-2.0, -2.0, 0.0, 1.0);
        vTexCoord = place;
        vFace = normals;
        vDepth = -1.0;
        return;
    }
    // First to its half of the frame, then the turn about the frame's middle, then away from the camera: so each
    // box brings its outer side to the front.
    vec3 p = position + vec3(uBoxMoveData.xy, 0.0);
    p = TurnY(radians(uBoxRotateData.y)) * TurnX(radians(uBoxRotateData.x)) * p;
    vec4 clip = uProj * vec4(p + vec3(0.0, 0.0, uBoxMoveData.z), 1.0);
    clip.xy *= 2.412 / 2.41421356;  // the flat front then fills the frame exactly
    clip.z = clip.w - 1.0;
    gl_Position = clip;
    vTexCoord = texcoord + uTexMoveData;
    vFace = normals;
    vDepth = clip.w;
}
