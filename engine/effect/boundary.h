// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <exception>

#include "engine/engine_log.h"

namespace kelmo {

/// Runs the body of a contract operation: an exception ends here, as a log line that names the
/// operation, and `failed` is the result.
template <typename Result, typename Body>
Result AtBoundary(const EngineLog& log, const char* operation, Result failed, Body&& body) {
    try {
        return body();
    } catch (const std::exception& error) {
        log.Error("engine: %s: %s", operation, error.what());
    } catch (...) {
        log.Error("engine: %s: unknown error", operation);
    }
    return failed;
}

}  // namespace kelmo
