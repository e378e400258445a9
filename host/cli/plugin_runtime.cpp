// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/cli/plugin_runtime.h"

#include <filesystem>

#include <fmt/format.h>

#include "host/session/host_error.h"

namespace kelmo::host {

namespace {

std::unique_ptr<PluginLibrary> LoadPlugin(const Installation& installation) {
    std::error_code ignored;
    const std::string file = installation.PluginFile();
    if (!std::filesystem::exists(file, ignored)) {
        throw HostError(fmt::format(
            "no plug-in at {}; say where it is with --plugins DIR or KELMO_PLUGINS", file));
    }
    return PluginLibrary::Load(file);
}

}  // namespace

PluginRuntime::PluginRuntime(const Installation& installation, Console& console, bool onGpu)
    : device(onGpu ? GlDevice::Create() : nullptr),
      services(
          {installation.resources.string(), installation.plugins.string()},
          [&console](int32_t level, std::string_view line) { console.PluginLine(level, line); },
          onGpu),
      plugin(LoadPlugin(installation)) {
    plugin->Startup(services);
    catalogue = Catalogue::Of(*plugin);
    if (!catalogue.Effects().empty()) return;
    throw HostError(fmt::format(
        "the plug-in found no effects below {}; say where the material is with --resources DIR or "
        "KELMO_RESOURCES",
        installation.MaterialFolder()));
}

}  // namespace kelmo::host
