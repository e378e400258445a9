// SPDX-License-Identifier: GPL-3.0-or-later
// Places solid letters: each moves about its own centre, then all by the scene's matrices.
#include "text_motion.glsl"
#include "variant:0"
#include "variant:1"

in vec4 position;
in vec3 texcoord;
in vec3 normals;
in vec3 tangents;
in vec4 centers;  // of the letter; w its number
uniform mat4 uMVP;
uniform mat4 uModel;
uniform float uContourNum;
uniform float AnimationIn;      // seconds that a letter takes
uniform float AnimationOut;
uniform float AnimationOffset;  // seconds from one letter to the next

out vec3 vWorld;
out vec3 vNormal;
out vec3 vSurface;  // u, v, kind: 0 face, 1 wall, 2 bevel, 1000 decoration
out vec3 vTint;     // of a decoration
out float vLetterAlpha;
out float vDepthBelow;  // how far behind the front of the text

mat3 TurnXYZ(vec3 a) {
    vec3 c = cos(a);
    vec3 s = sin(a);
    mat3 x = mat3(1, 0, 0, 0, c.x, s.x, 0, -s.x, c.x);
    mat3 y = mat3(c.y, 0, -s.y, 0, 1, 0, s.y, 0, c.y);
    mat3 z = mat3(c.z, s.z, 0, -s.z, c.z, 0, 0, 0, 1);
    return z * y * x;
}

void Move(Pose pose, vec3 center, inout vec3 p, inout vec3 n) {
    mat3 turn = TurnXYZ(pose.turn);
    p = center + turn * ((p - center) * pose.size) + pose.move;
    n = turn * n;
}

void main() {
    vSurface = texcoord;
    vTint = tangents;
    vDepthBelow = -position.z;
    vec3 p = position.xyz;
    vec3 n = normals;
    vLetterAlpha = 1.0;
    bool decoration = texcoord.z > 500.0;
    float letters = max(uContourNum, 1.0);
    float number = clamp(centers.w, 0.0, letters - 1.0);
    float room = max(0.5 * total_time - max(AnimationIn, AnimationOut), 0.0) / letters;
    float step_time = min(AnimationOffset, room);
    if (decoration) {
        // Lines and boxes have no number: they come and go with the first letter.
        number = 0.0;
        vLetterAlpha = 1.0 - centers.w;
    }
    float seed = Hash(int(number) + 5);
    float entered = AnimationIn > 0.0 ? clamp((global_time - number * step_time) / AnimationIn, 0.0, 1.0) : 1.0;
    float leaves = total_time - AnimationOut - (letters - 1.0 - number) * step_time;
    float gone = AnimationOut > 0.0 && total_time > 0.0 ? clamp((global_time - leaves) / AnimationOut, 0.0, 1.0) : 0.0;
    Pose enter = entered < 1.0 ? Enter(entered, seed) : Rest();
    Pose leave = gone > 0.0 ? Leave(1.0 - gone, seed) : Rest();
    if (!decoration) {
        Move(enter, centers.xyz, p, n);
        Move(leave, centers.xyz, p, n);
    }
    vLetterAlpha *= enter.alpha * leave.alpha;
    vWorld = (uModel * vec4(p, 1.0)).xyz;
    vNormal = mat3(uModel) * n;
    vec4 clip = uMVP * vec4(p, 1.0);
    if (decoration) clip.z = 0.9999 * clip.w;  // behind the letters
    gl_Position = vLetterAlpha > 0.0 ? clip : vec4(2.0, 2.0, 2.0, 1.0);
    vTexCoord = clip.xy / max(clip.w, 0.0001) * 0.5 + 0.5;
}
