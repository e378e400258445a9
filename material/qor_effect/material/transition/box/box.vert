// SPDX-License-Identifier: GPL-3.0-or-later
const float kNearest = 2.412;
const bool kBackdrop = false;
#include "box.glsl"
