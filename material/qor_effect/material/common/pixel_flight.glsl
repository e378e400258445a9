// SPDX-License-Identifier: GPL-3.0-or-later
// When which place of a picture flies: a front goes over what is bright, from left to right or back.
#include "frame.glsl"
#include "noise.glsl"
#include "progress.glsl"

// How far a place (device x) is in its flight: 0 not begun, 1 done. Bounds in device space; a flight takes
// `life` percent of all the time.
float Flight(float x, float own, float left, float right, float duration, float life, int backwards) {
    float t = duration > 0.0 ? global_time / duration : 1.0;
    float order = right > left ? clamp((x - left) / (right - left), 0.0, 1.0) : 0.0;
    if (backwards == 1) order = 1.0 - order;
    float takes = clamp(life / 100.0, 0.05, 1.0);
    order = clamp(0.88 * order + 0.12 * own, 0.0, 1.0);
    return clamp((t - order * (1.0 - takes)) / takes, 0.0, 1.0);
}
