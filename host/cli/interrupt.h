// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace kelmo::host {

/// Exit code after an interrupt: 128 + SIGINT, as shells have it.
inline constexpr int kExitInterrupted = 130;

/// From now on the first interrupt (Ctrl-C, SIGTERM) only raises a flag, so that the work at hand
/// can end cleanly; a second one ends the program at once.
void CatchInterrupts();
bool Interrupted();

}  // namespace kelmo::host
