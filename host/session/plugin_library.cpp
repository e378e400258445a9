// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/session/plugin_library.h"

#include <fmt/format.h>

#include "host/session/host_error.h"

namespace kelmo::host {

namespace {

template <typename Function>
void Require(const DynamicLibrary& library, const std::string& path, const char* name,
             Function& function) {
    function = library.FindFunction<Function>(name);
    if (function == nullptr) {
        throw HostError(fmt::format(
            "{} has no export {}; it is no plug-in of this kind, or one of another version", path,
            name));
    }
}

}  // namespace

PluginLibrary::PluginLibrary(DynamicLibrary opened, std::string file)
    : library(std::move(opened)), path(std::move(file)) {}

std::unique_ptr<PluginLibrary> PluginLibrary::Load(const std::string& file) {
    std::unique_ptr<PluginLibrary> plugin(new PluginLibrary(DynamicLibrary::Load(file), file));
    Require(plugin->library, file, kStartupQor, plugin->startup);
    Require(plugin->library, file, kShutdownQor, plugin->shutdown);
    Require(plugin->library, file, kRegisterQorEffect, plugin->registerEffect);
    Require(plugin->library, file, kRegisterQorEffectFromConfPath, plugin->registerFromFolder);
    Require(plugin->library, file, kCreateQorEffect, plugin->createEffect);
    Require(plugin->library, file, kReleaseQorEffect, plugin->releaseEffect);
    return plugin;
}

PluginLibrary::~PluginLibrary() {
    Shutdown();
}

void PluginLibrary::Startup(QorPluginHost& host) {
    if (started) return;
    library.KeepLoaded();
    const int32_t result = startup(&host, &info);
    if (result != kQorOk) {
        throw HostError(fmt::format("{} did not start: {} returned {}; the log above says why",
                                    path, kStartupQor, result));
    }
    started = true;
}

void PluginLibrary::Shutdown() {
    if (!started) return;
    started = false;
    shutdown();
}

bool PluginLibrary::Register(int32_t index, QorEffectRegistrar& registrar) {
    return registerEffect(index, &registrar) == kQorOk;
}

PluginLibrary::EffectPointer PluginLibrary::CreateEffect(const std::string& guid,
                                                         int32_t deviceType) {
    QorEffect* effect = nullptr;
    const int32_t result = createEffect(guid.c_str(), deviceType, &effect);
    if (result != kQorOk) effect = nullptr;
    return EffectPointer(effect, Releaser{releaseEffect});
}

}  // namespace kelmo::host
