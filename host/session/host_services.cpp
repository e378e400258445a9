// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/session/host_services.h"

#include <cstdio>
#include <cstring>
#include <vector>

namespace kelmo::host {

namespace {

/// How many OwnWork objects live on this thread.
thread_local int ownWork = 0;

std::string Formatted(const char* format, va_list arguments) {
    char small[512];
    va_list again;
    va_copy(again, arguments);
    const int length = std::vsnprintf(small, sizeof small, format, arguments);
    std::string line;
    if (length >= static_cast<int>(sizeof small)) {
        std::vector<char> large(static_cast<size_t>(length) + 1);
        std::vsnprintf(large.data(), large.size(), format, again);
        line.assign(large.data(), static_cast<size_t>(length));
    } else if (length > 0) {
        line.assign(small, static_cast<size_t>(length));
    }
    va_end(again);
    while (!line.empty() && (line.back() == '\n' || line.back() == '\r')) line.pop_back();
    return line;
}

}  // namespace

HostServices::HostServices(HostFolders hostFolders, LogSink logSink, bool openGlDevice)
    : folders(std::move(hostFolders)),
      sink(std::move(logSink)),
      openGl(openGlDevice),
      gpuSuite(openGlDevice) {}

int32_t HostServices::AcquireSuite(const char* name, int32_t version, void** suite) {
    if (suite == nullptr) return kQorRefused;
    *suite = nullptr;
    if (name == nullptr || version != 1) return kQorRefused;
    // Through the base class: the plug-in casts the address back to exactly that.
    if (std::strcmp(name, kHostUtilSuite) == 0) {
        *suite = static_cast<QorHostUtilSuite*>(&utilSuite);
    } else if (std::strcmp(name, kGpuDeviceSuite) == 0) {
        *suite = static_cast<QorGpuDeviceSuite*>(&gpuSuite);
    } else if (std::strcmp(name, kMemoryAllocatorSuite) == 0) {
        *suite = &memorySuite;
    } else if (std::strcmp(name, kImageBufferAllocatorSuite) == 0) {
        *suite = &imageSuite;
    }
    return *suite == nullptr ? kQorRefused : kQorOk;
}

std::string HostServices::LastError() const {
    const std::lock_guard<std::mutex> lock(mutex);
    return lastError;
}

void HostServices::ForgetError() {
    const std::lock_guard<std::mutex> lock(mutex);
    lastError.clear();
    listened = std::this_thread::get_id();
}

HostServices::OwnWork::OwnWork() {
    ++ownWork;
}

HostServices::OwnWork::~OwnWork() {
    --ownWork;
}

int32_t HostServices::DeviceType() const {
    return openGl ? kQorGPUDeviceTypeOpenGL : kQorDeviceTypeCpu;
}

void HostServices::Write(int32_t level, const char* format, va_list arguments) {
    if (format == nullptr) return;
    const std::string line = Formatted(format, arguments);
    const std::lock_guard<std::mutex> lock(mutex);
    const bool reason = level >= kLogError && ownWork == 0;
    if (reason && listened == std::this_thread::get_id()) lastError = line;
    if (sink) sink(level, line);
}

int32_t HostServices::UtilSuite::GetPath(int32_t kind, char* buffer, int32_t size) {
    if (buffer == nullptr || size <= 0) return kQorRefused;
    if (kind != kPathResources && kind != kPathPlugin) return kQorRefused;
    const HostFolders& folders = owner.folders;
    const std::string& path = kind == kPathResources ? folders.resources : folders.plugins;
    if (path.size() >= static_cast<size_t>(size)) return kQorRefused;
    std::memcpy(buffer, path.c_str(), path.size() + 1);
    return kQorOk;
}

void HostServices::UtilSuite::Log(int32_t level, const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    owner.Write(level, format, arguments);
    va_end(arguments);
}

int32_t HostServices::GpuSuite::GetDeviceInfo(int32_t index, QorGpuDeviceInfo* info) {
    if (info == nullptr || index < 0 || index >= GetDeviceCount()) return kQorRefused;
    *info = QorGpuDeviceInfo{};
    info->type = kQorGPUDeviceTypeOpenGL;
    return kQorOk;
}

int32_t HostServices::GpuSuite::GetSurfaceTexture(void* surface, int32_t* texture, int32_t) {
    if (surface == nullptr || texture == nullptr) return kQorRefused;
    *texture = static_cast<GpuSurface*>(surface)->texture;
    return kQorOk;
}

}  // namespace kelmo::host
