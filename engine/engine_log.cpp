// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/engine_log.h"

namespace kelmo {

void EngineLog::Error(const char* format, ...) const {
    if (!callback) return;
    va_list args;
    va_start(args, format);
    callback(kLogError, format, args);
    va_end(args);
}

void EngineLog::Warning(const char* format, ...) const {
    if (!callback) return;
    va_list args;
    va_start(args, format);
    callback(kLogWarning, format, args);
    va_end(args);
}

void EngineLog::Info(const char* format, ...) const {
    if (!callback) return;
    va_list args;
    va_start(args, format);
    callback(kLogInfo, format, args);
    va_end(args);
}

}  // namespace kelmo
