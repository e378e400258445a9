// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/device/gl_devices.h"

#include <utility>

namespace kelmo {

GlDevices::GlDevices(std::unique_ptr<GlContext> ownContext, const EngineLog& log)
    : log(log), own(std::make_shared<GlDevice>(std::move(ownContext), log)) {}

std::shared_ptr<GlDevice> GlDevices::Current() {
    if (own) return own;
    std::unique_ptr<GlContext> context = MakeHostContext();
    const char* reason = "";
    if (!context->Enter(reason)) {
        log.Error("engine: %s", reason);
        return nullptr;
    }
    void* const handle = context->Handle();
    context->Leave();
    const std::lock_guard lock(mutex);
    for (const HostDevice& known : hostDevices) {
        if (known.context == handle) return known.device;
    }
    std::erase_if(hostDevices,
                  [](const HostDevice& known) { return known.device.use_count() == 1; });
    hostDevices.push_back({handle, std::make_shared<GlDevice>(std::move(context), log)});
    return hostDevices.back().device;
}

}  // namespace kelmo
