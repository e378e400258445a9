// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdarg>
#include <functional>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>

#include "contract/qor_host.h"

namespace kelmo::host {

/// Folders that the plug-in asks for.
struct HostFolders {
    std::string resources;  ///< holds qor_effect/
    std::string plugins;    ///< holds the plug-in, the engines and the AI library
};

/// Receives one log line without line end. Calls do not overlap.
using LogSink = std::function<void(int32_t level, std::string_view line)>;

/// A picture on the GPU, as `QorFrame::GetSurface` hands it out: a texture of the host's context.
struct GpuSurface {
    int32_t texture = 0;
};

/// What the plug-in acquires: folders, log, device list, and two allocator suites that have no
/// operations. Must outlive the plug-in.
///
/// Thread rule: every call from any thread.
class HostServices final : public QorPluginHost {
public:
    /// With `openGlDevice` the device list holds one OpenGL device: a promise that every effect is
    /// driven on one thread with the host's context current.
    HostServices(HostFolders folders, LogSink sink, bool openGlDevice);

    int32_t AcquireSuite(const char* name, int32_t version, void** suite) override;

    /// The reason of a failure: the last line of level kLogError that the thread which called
    /// ForgetError has logged since then. Lines of other threads (a loader's, say) and of the
    /// host's own work are none.
    std::string LastError() const;
    void ForgetError();

    /// While it lives, the lines of its thread are the host's own, even in the midst of a frame:
    /// they are shown and are the reason of no failure.
    class OwnWork {
    public:
        OwnWork();
        ~OwnWork();
        OwnWork(const OwnWork&) = delete;
        OwnWork& operator=(const OwnWork&) = delete;
    };

    /// kQorGPUDeviceTypeOpenGL or kQorDeviceTypeCpu: what effects are created with.
    int32_t DeviceType() const;

private:
    class UtilSuite final : public QorHostUtilSuite {
    public:
        explicit UtilSuite(HostServices& parent) : owner(parent) {}
        int32_t GetPath(int32_t kind, char* buffer, int32_t size) override;
        void Log(int32_t level, const char* format, ...) override;

    private:
        HostServices& owner;
    };

    class GpuSuite final : public QorGpuDeviceSuite {
    public:
        explicit GpuSuite(bool present) : hasDevice(present) {}
        int32_t GetDeviceCount() override { return hasDevice ? 1 : 0; }
        int32_t GetDeviceInfo(int32_t index, QorGpuDeviceInfo* info) override;
        int32_t GetSurfaceTexture(void* surface, int32_t* texture, int32_t reserved) override;

    private:
        bool hasDevice;
    };

    /// Suites that are acquired and never called still need an address.
    struct EmptySuite {
        virtual ~EmptySuite() = default;
    };

    void Write(int32_t level, const char* format, va_list arguments);

    HostFolders folders;
    LogSink sink;
    bool openGl;
    mutable std::mutex mutex;  // guards sink, lastError and listened
    std::string lastError;
    std::thread::id listened = std::this_thread::get_id();
    EmptySuite memorySuite;
    EmptySuite imageSuite;
    UtilSuite utilSuite{*this};
    GpuSuite gpuSuite;
};

}  // namespace kelmo::host
