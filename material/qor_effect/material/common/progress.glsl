// SPDX-License-Identifier: GPL-3.0-or-later

// How far the effect has come: 0 at its first frame, 1 at its end.
float Progress() { return total_time > 0.0 ? clamp(global_time / total_time, 0.0, 1.0) : 0.0; }
