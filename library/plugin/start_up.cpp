// SPDX-License-Identifier: GPL-3.0-or-later
#include "plugin/start_up.h"

#include <atomic>

#include "bindings/ai_effect_lib.h"
#include "catalogue/filter_catalogue.h"
#include "framework/engine/effect_engine.h"
#include "framework/filter/sub_filters.h"
#include "framework/textures/texture_background.h"
#include "platform/host_access.h"
#include "plugin/effect_creation.h"

namespace kelmo {

namespace {

std::atomic<bool> stopped{false};

bool FindOpenGLDevice() {
    QorGpuDeviceSuite* const devices = GpuDevices();
    if (!devices) return false;
    for (int32_t index = 0; index < devices->GetDeviceCount(); ++index) {
        QorGpuDeviceInfo device;
        devices->GetDeviceInfo(index, &device);
        if (device.type == kQorGPUDeviceTypeOpenGL) return true;
    }
    return false;
}

void ChooseDevice() {
    SetOpenGLDevice(FindOpenGLDevice());
    if (HasOpenGLDevice()) {
        LogInfo("kQorGPUDeviceTypeOpenGL success:%d", NoOpenGLDevice());
    } else {
        LogWarning("kQorGPUDeviceTypeOpenGL is Failed");
    }
}

void Describe(QorPluginInfo& info) {
    info.interfaceVersion = 1;
    info.pluginVersion = 1;
    info.name = "OpenGL Filter";
    info.vendor = "org.kelmo";
    info.description = "OpenGL Filter Desc";
    info.extra = "";
    info.effectCount = static_cast<int32_t>(GetCatalogue().Count());
}

}  // namespace

int32_t StartPlugin(QorPluginHost* host, QorPluginInfo* info) {
    if (!host) return kQorRefused;
    AcquireHostSuites(host);
    stopped = false;
    ChooseDevice();
    SetSubFilterCreation(CreateFilterFromCatalogue);
    InstallAIEffectLib();
    LoadCatalogue(HostPath(kPathResources));
    if (info) Describe(*info);
    return kQorOk;
}

int32_t StopPlugin() {
    WaitForOrphanedLoaders();
    ShutdownEffectEngine();
    stopped = true;
    ForgetHostWhenDone();
    return kQorOk;
}

void ForgetHostWhenDone() {
    if (stopped && !HasEffectObjects()) AcquireHostSuites(nullptr);
}

}  // namespace kelmo
