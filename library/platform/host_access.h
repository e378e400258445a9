// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdarg>
#include <cstdint>
#include <string>

#include "contract/qor_host.h"

#if defined(__GNUC__)
#define KELMO_PRINTF(formatIndex, firstArgument) \
    __attribute__((format(printf, formatIndex, firstArgument)))
#else
#define KELMO_PRINTF(formatIndex, firstArgument)
#endif

/// The host as the whole library sees it: its suites, its folders and its log.
///
/// The suites belong to the host. They are acquired once at start-up; from then on every function
/// here may be called from any thread. Without a host, or with one that lacks a suite, logging does
/// nothing and paths keep their preset names: code (and its tests) runs alone.
namespace kelmo {

/// Asks the host for its four suites, version 1, in the order "Memory Allocator Suite", "Image
/// Buffer ALlocator Suite", "Host Util Suite", "GPU Device Suite". A suite that the host refuses is
/// null afterwards. A null host forgets all of them.
void AcquireHostSuites(QorPluginHost* host);

/// The suites, or null. Borrowed from the host.
QorHostUtilSuite* HostUtil();
QorGpuDeviceSuite* GpuDevices();

/// A folder of the host as UTF-8, without anything added to what the host answers. A host that
/// fails or writes nothing leaves the preset name: "resources" or "qorPlugin".
std::string HostPath(QorPathKind kind);

/// One line to the host's log. Formatted into a buffer of 4096 bytes of the calling thread (longer
/// text is cut), so that threads never mix their lines; the host receives "%s" and the text, and a
/// percent sign in a file name does no harm.
void LogInfo(const char* format, ...) KELMO_PRINTF(1, 2);
void LogWarning(const char* format, ...) KELMO_PRINTF(1, 2);
void LogError(const char* format, ...) KELMO_PRINTF(1, 2);

/// The log callback that the engine and the AI library get: passes their line on with its level,
/// cut at 8191 bytes.
void ForwardLibraryLog(int32_t level, const char* format, va_list arguments);

}  // namespace kelmo
