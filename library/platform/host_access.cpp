// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/host_access.h"

#include <atomic>
#include <cstdio>
#include <cstring>

namespace kelmo {
namespace {

constexpr int32_t kSuiteVersion = 1;
constexpr std::size_t kPathSize = 4096;
constexpr std::size_t kLineSize = 4096;
constexpr std::size_t kLibraryLineSize = 8192;

// Atomic because worker threads log while the start-up thread may still be exchanging the host.
std::atomic<QorHostUtilSuite*> hostUtil{nullptr};
std::atomic<QorGpuDeviceSuite*> gpuDevices{nullptr};

void* AcquireSuite(QorPluginHost* host, const char* name) {
    if (host == nullptr) {
        return nullptr;
    }
    void* suite = nullptr;
    return host->AcquireSuite(name, kSuiteVersion, &suite) == 0 ? suite : nullptr;
}

void SendLine(int32_t level, char* buffer, std::size_t size, const char* format,
              va_list arguments) {
    QorHostUtilSuite* const util = HostUtil();
    if (util == nullptr || format == nullptr) {
        return;
    }
    if (std::vsnprintf(buffer, size, format, arguments) < 0) {
        return;
    }
    util->Log(level, "%s", buffer);
}

void SendOwnLine(int32_t level, const char* format, va_list arguments) {
    thread_local char buffer[kLineSize];
    SendLine(level, buffer, sizeof buffer, format, arguments);
}

}  // namespace

void AcquireHostSuites(QorPluginHost* host) {
    // Some hosts count acquisitions, so the two allocators are asked for although nothing here
    // allocates through them.
    AcquireSuite(host, kMemoryAllocatorSuite);
    AcquireSuite(host, kImageBufferAllocatorSuite);
    hostUtil = static_cast<QorHostUtilSuite*>(AcquireSuite(host, kHostUtilSuite));
    gpuDevices = static_cast<QorGpuDeviceSuite*>(AcquireSuite(host, kGpuDeviceSuite));
}

QorHostUtilSuite* HostUtil() {
    return hostUtil.load(std::memory_order_acquire);
}

QorGpuDeviceSuite* GpuDevices() {
    return gpuDevices.load(std::memory_order_acquire);
}

std::string HostPath(QorPathKind kind) {
    const char* const preset = kind == kPathResources ? "resources" : "qorPlugin";
    char buffer[kPathSize] = {};
    std::strcpy(buffer, preset);
    if (QorHostUtilSuite* const util = HostUtil()) {
        util->GetPath(kind, buffer, static_cast<int32_t>(sizeof buffer));
        const bool filled = std::memchr(buffer, 0, sizeof buffer - 1) == nullptr;
        buffer[sizeof buffer - 1] = 0;
        if (filled) {
            LogError("kelmo: the path of the host's folder \"%s\" is too long and may be cut",
                     preset);
        }
    }
    return buffer;
}

void LogInfo(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    SendOwnLine(kLogInfo, format, arguments);
    va_end(arguments);
}

void LogWarning(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    SendOwnLine(kLogWarning, format, arguments);
    va_end(arguments);
}

void LogError(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    SendOwnLine(kLogError, format, arguments);
    va_end(arguments);
}

void ForwardLibraryLog(int32_t level, const char* format, va_list arguments) {
    thread_local char buffer[kLibraryLineSize];
    SendLine(level, buffer, sizeof buffer, format, arguments);
}

}  // namespace kelmo
