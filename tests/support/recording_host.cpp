// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/recording_host.h"

#include <cstdarg>
#include <cstdio>

#include "platform/host_access.h"

namespace kelmo::test {

RecordingHost::RecordingHost() : utilSuite(*this), deviceSuite(*this) {}

int32_t RecordingHost::AcquireSuite(const char* name, int32_t version, void** suite) {
    acquiredNames.emplace_back(name);
    acquiredVersions.push_back(version);
    *suite = nullptr;
    if (missingSuites.contains(name)) {
        return 1;
    }
    const std::string asked = name;
    if (asked == kHostUtilSuite) {
        *suite = static_cast<QorHostUtilSuite*>(&utilSuite);
    } else if (asked == kGpuDeviceSuite) {
        *suite = static_cast<QorGpuDeviceSuite*>(&deviceSuite);
    } else if (asked == kMemoryAllocatorSuite || asked == kImageBufferAllocatorSuite) {
        // Nothing is ever called on the allocators: any address that is not null will do.
        *suite = this;
    } else {
        return 1;
    }
    return 0;
}

std::vector<LogLine> RecordingHost::Lines() const {
    const std::lock_guard guard(lineMutex);
    return lines;
}

std::vector<std::string> RecordingHost::Texts(int32_t level) const {
    const std::lock_guard guard(lineMutex);
    std::vector<std::string> texts;
    for (const LogLine& line : lines) {
        if (line.level == level) {
            texts.push_back(line.text);
        }
    }
    return texts;
}

void RecordingHost::ClearLines() {
    const std::lock_guard guard(lineMutex);
    lines.clear();
}

int32_t RecordingHost::UtilSuite::GetPath(int32_t kind, char* buffer, int32_t size) {
    host.pathPresets.emplace_back(buffer);
    host.pathSizes.push_back(size);
    const std::string& path = kind == kPathResources ? host.resourceFolder : host.pluginFolder;
    if (path.empty()) {
        return 1;
    }
    std::snprintf(buffer, static_cast<std::size_t>(size), "%s", path.c_str());
    return 0;
}

void RecordingHost::UtilSuite::Log(int32_t level, const char* format, ...) {
    va_list arguments;
    va_list measured;
    va_start(arguments, format);
    va_copy(measured, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, measured);
    va_end(measured);
    std::string text(length > 0 ? static_cast<std::size_t>(length) : 0, '\0');
    std::vsnprintf(text.data(), text.size() + 1, format, arguments);
    va_end(arguments);
    const std::lock_guard guard(host.lineMutex);
    host.lines.push_back({level, std::move(text)});
}

int32_t RecordingHost::DeviceSuite::GetDeviceCount() {
    return static_cast<int32_t>(host.devices.size());
}

int32_t RecordingHost::DeviceSuite::GetDeviceInfo(int32_t index, QorGpuDeviceInfo* info) {
    if (index < 0 || index >= GetDeviceCount()) {
        return 1;
    }
    *info = {};
    info->type = host.devices[static_cast<std::size_t>(index)];
    return 0;
}

int32_t RecordingHost::DeviceSuite::GetSurfaceTexture(void* surface, int32_t* texture, int32_t) {
    const auto found = host.surfaceTextures.find(surface);
    if (found == host.surfaceTextures.end()) {
        return 1;
    }
    *texture = found->second;
    return 0;
}

AcquiredHost::AcquiredHost() {
    AcquireHostSuites(this);
}

AcquiredHost::~AcquiredHost() {
    AcquireHostSuites(nullptr);
}

}  // namespace kelmo::test
