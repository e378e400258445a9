// SPDX-License-Identifier: GPL-3.0-or-later
Pose Leave(float t, float seed) { return Drop(t, seed); }
