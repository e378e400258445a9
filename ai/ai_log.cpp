// SPDX-License-Identifier: GPL-3.0-or-later
#include "ai/ai_log.h"

#include <atomic>

namespace kelmo {

namespace {
std::atomic<LibraryLogCallback> logCallback{nullptr};
}

void SetAiLogCallback(LibraryLogCallback callback) {
    logCallback = callback;
}

void AiLog(AiLogLevel level, const char* format, ...) {
    const LibraryLogCallback callback = logCallback;
    if (!callback) return;
    va_list arguments;
    va_start(arguments, format);
    callback(level, format, arguments);
    va_end(arguments);
}

}  // namespace kelmo
