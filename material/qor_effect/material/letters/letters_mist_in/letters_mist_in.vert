// SPDX-License-Identifier: GPL-3.0-or-later
#include "letter_mist.glsl"
