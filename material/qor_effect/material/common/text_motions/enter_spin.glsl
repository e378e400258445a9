// SPDX-License-Identifier: GPL-3.0-or-later
Pose Enter(float t, float seed) { return Spin(t); }
