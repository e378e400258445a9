// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <exception>

#include "platform/host_access.h"

namespace kelmo {

/// Runs what stands behind an export or an operation of an effect object. What it throws is logged
/// with the name of the operation and becomes `failure`: no exception crosses to the host.
template <typename Operation>
int32_t AtBoundary(const char* name, int32_t failure, Operation&& operation) noexcept {
    try {
        return operation();
    } catch (const std::exception& problem) {
        LogError("kelmo:%s: %s", name, problem.what());
    } catch (...) {
        LogError("kelmo:%s: unknown exception", name);
    }
    return failure;
}

}  // namespace kelmo
