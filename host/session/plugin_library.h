// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <string>

#include "contract/qor_host.h"
#include "host/session/dynamic_library.h"

namespace kelmo::host {

inline constexpr const char* kPluginFileName = "qorOpenGLFilterPlugin.qor";

/// The loaded plug-in and its six exports.
///
/// Load, Startup, any number of effects, Shutdown (or the destructor, which does it): once in that
/// order, one plug-in in a process. The host object given to Startup must outlive this object, and
/// effects must be gone before it. Errors are HostError.
///
/// Thread rule: Load, Startup, Register and Shutdown on one thread; CreateEffect on any.
class PluginLibrary {
public:
    /// `file` is the library itself. Throws when it is missing, does not load, or lacks an export.
    static std::unique_ptr<PluginLibrary> Load(const std::string& file);
    ~PluginLibrary();
    PluginLibrary(const PluginLibrary&) = delete;
    PluginLibrary& operator=(const PluginLibrary&) = delete;

    void Startup(QorPluginHost& host);
    void Shutdown();
    /// Valid after Startup.
    const QorPluginInfo& Info() const { return info; }
    const std::string& File() const { return path; }

    /// False when the plug-in refuses the index.
    bool Register(int32_t index, QorEffectRegistrar& registrar);

    struct Releaser {
        ReleaseQorEffectFn release = nullptr;
        void operator()(QorEffect* effect) const { release(effect); }
    };
    using EffectPointer = std::unique_ptr<QorEffect, Releaser>;

    /// `deviceType`: kQorGPUDeviceTypeOpenGL when the host reported such a device, else
    /// kQorDeviceTypeCpu. Empty when the plug-in refuses.
    EffectPointer CreateEffect(const std::string& guid, int32_t deviceType);

private:
    PluginLibrary(DynamicLibrary opened, std::string file);

    DynamicLibrary library;
    std::string path;
    StartupQorFn startup = nullptr;
    ShutdownQorFn shutdown = nullptr;
    RegisterQorEffectFn registerEffect = nullptr;
    RegisterQorEffectFromConfPathFn registerFromFolder = nullptr;
    CreateQorEffectFn createEffect = nullptr;
    ReleaseQorEffectFn releaseEffect = nullptr;
    QorPluginInfo info;
    bool started = false;
};

}  // namespace kelmo::host
