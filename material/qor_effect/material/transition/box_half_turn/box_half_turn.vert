// SPDX-License-Identifier: GPL-3.0-or-later
const float kNearest = 2.4187379;  // 2.412 and the camera's exp(-5) at both ends
const bool kBackdrop = true;
#include "../box/box.glsl"
