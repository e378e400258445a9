// SPDX-License-Identifier: GPL-3.0-or-later
const float kNearest = 2.412;
#include "box.glsl"
