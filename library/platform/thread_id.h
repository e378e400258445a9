// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace kelmo {

/// The system's number of the calling thread: never 0, one of a kind among the threads that live,
/// the number that a debugger shows. Cheap enough for every frame.
uint64_t CurrentThreadId();

}  // namespace kelmo
