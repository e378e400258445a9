// SPDX-License-Identifier: GPL-3.0-or-later
// How letters come in: each motion tells where a letter is at `t`, 0 not there yet, 1 at rest. Going out is the same
// with time running back.
#include "easing.glsl"
#include "noise.glsl"

struct Pose {
    vec3 move;  // halves of the frame's height
    vec3 turn;  // radians about x, y, z
    vec3 size;
    float alpha;
};

Pose Rest() { return Pose(vec3(0.0), vec3(0.0), vec3(1.0), 1.0); }

float Seen(float t) { return smoothstep(0.0, 0.25, t); }

float EaseOut(float t) { return 1.0 - pow(1.0 - t, 3.0); }

// Shoots a little beyond its end and comes back.
float EaseBack(float t) {
    float s = t - 1.0;
    return 1.0 + 2.2 * s * s * s + 1.2 * s * s;
}

float Bounced(float t) {
    const float k = 7.5625;
    if (t < 1.0 / 2.75) return k * t * t;
    if (t < 2.0 / 2.75) { t -= 1.5 / 2.75; return k * t * t + 0.75; }
    if (t < 2.5 / 2.75) { t -= 2.25 / 2.75; return k * t * t + 0.9375; }
    t -= 2.625 / 2.75;
    return k * t * t + 0.984375;
}

Pose Fade(float t) {
    Pose p = Rest();
    p.alpha = smoothstep(0.0, 1.0, t);
    return p;
}

Pose Fly(float t, float seed) {
    Pose p = Rest();
    p.move = vec3(-3.4 * (1.0 - EaseOut(t)), 0.0, 0.0);
    p.turn.y = -0.9 * (1.0 - EaseOut(t));
    p.alpha = step(0.001, t);
    return p;
}

Pose Drop(float t, float seed) {
    Pose p = Rest();
    p.move.y = 2.2 * (1.0 - Bounced(t));
    p.turn.z = (seed - 0.5) * 0.8 * (1.0 - smoothstep(0.2, 1.0, t));
    p.alpha = step(0.001, t);
    return p;
}

Pose Rise(float t) {
    Pose p = Rest();
    p.move.y = -0.55 * (1.0 - EaseOut(t));
    p.alpha = Seen(t);
    return p;
}

Pose TurnIn(float t) {
    Pose p = Rest();
    p.turn.y = 1.5707963 * (1.0 - EaseBack(t));
    p.alpha = step(0.001, t);
    return p;
}

Pose Spin(float t) {
    Pose p = Rest();
    p.turn.y = 9.424778 * (1.0 - EaseOut(t));
    p.size = vec3(EaseOut(t));
    p.alpha = Seen(t);
    return p;
}

Pose Unfold(float t) {
    Pose p = Rest();
    p.turn.x = -1.5707963 * (1.0 - EaseBack(t));
    p.move.y = -0.12 * (1.0 - EaseOut(t));
    p.alpha = step(0.001, t);
    return p;
}

Pose Scatter(float t, float seed) {
    Pose p = Rest();
    float away = 1.0 - EaseOut(t);
    float angle = 6.2831853 * seed;
    p.move = vec3(2.4 * cos(angle), 1.7 * sin(angle), 1.2 * (fract(seed * 7.3) - 0.3)) * away;
    p.turn = vec3(5.0 * fract(seed * 3.1), 6.0 * fract(seed * 5.7), 4.0 * fract(seed * 9.9)) * away;
    p.alpha = Seen(t);
    return p;
}

Pose ZoomIn(float t) {
    Pose p = Rest();
    float away = 1.0 - EaseOut(t);
    p.move.z = -9.0 * away;
    p.alpha = Seen(t);
    return p;
}

Pose Wave(float t) {
    Pose p = Rest();
    p.move.y = 0.35 * sin(9.424778 * t) * (1.0 - t);
    p.size = vec3(mix(0.6, 1.0, EaseOut(t)));
    p.alpha = Seen(t);
    return p;
}

Pose Typewriter(float t) {
    Pose p = Rest();
    p.alpha = step(0.001, t);
    return p;
}

Pose Pop(float t) {
    Pose p = Rest();
    p.size = vec3(max(EaseBack(t), 0.0001));
    p.alpha = step(0.001, t);
    return p;
}
