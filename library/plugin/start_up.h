// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "contract/qor_host.h"

/// Start and stop of the library, on one thread of the host.
namespace kelmo {

/// Acquires the suites, looks for an OpenGL device, loads the AI library and the catalogue, and
/// fills `info` (may be null). A host without a device and a missing AI library are no errors.
/// 0, or 2 for a null host.
int32_t StartPlugin(QorPluginHost* host, QorPluginInfo* info);

/// Gives the engine back, and waits for background loaders of effects that are gone. Effects that
/// still live keep the host's suites and their loaders. Always 0.
int32_t StopPlugin();

/// After a stop, once no effect lives any more, the host's suites are forgotten: a library that is
/// still busy in the background must not log to a host that may be gone. Called whenever that may
/// have come true.
void ForgetHostWhenDone();

}  // namespace kelmo
