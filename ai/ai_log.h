// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contract/ai_filter.h"

namespace kelmo {

/// Levels of the log callback.
enum AiLogLevel : int32_t { kAiLogInfo = 2, kAiLogWarning = 3, kAiLogError = 4 };

/// The callback of the whole process, null for none. Any thread.
void SetAiLogCallback(LibraryLogCallback callback);

/// Writes one line to the callback; nothing without one. Any thread, as far as the callback is safe
/// on it: the lines of the threads that load networks come from those threads.
__attribute__((format(printf, 2, 3))) void AiLog(AiLogLevel level, const char* format, ...);

}  // namespace kelmo
