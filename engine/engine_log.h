// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contract/engine.h"

namespace kelmo {

/// Levels of the log callback.
enum EngineLogLevel : int32_t { kLogInfo = 2, kLogWarning = 3, kLogError = 4 };

/// Where the engine reports to: the callback that it was created with. Copied by value. Without a
/// callback nothing is reported. Thread-safe as far as the callback is.
class EngineLog {
public:
    explicit EngineLog(EngineLogCallback callback = nullptr) : callback(callback) {}

    __attribute__((format(printf, 2, 3))) void Error(const char* format, ...) const;
    __attribute__((format(printf, 2, 3))) void Warning(const char* format, ...) const;
    __attribute__((format(printf, 2, 3))) void Info(const char* format, ...) const;

private:
    EngineLogCallback callback;
};

}  // namespace kelmo
