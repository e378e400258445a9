// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace kelmo {

/// Products of bytes as coverages: entry a * 256 + b is a * b / 255, rounded to nearest. The inner
/// loop of the mask blend reads it instead of dividing. Filled when the library is loaded, before
/// any thread can read it, and unchanged until it is unloaded.
extern uint8_t multiplyTable[256 * 256];

/// Fills the table. Later calls return at once.
void InitBlendTables();

}  // namespace kelmo
