// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>

#include "host/cli/console.h"
#include "host/cli/installation.h"
#include "host/session/catalogue.h"
#include "host/session/gl_device.h"
#include "host/session/host_services.h"
#include "host/session/plugin_library.h"

namespace kelmo::host {

/// The started plug-in with everything that it stands on, ended in the right order. One in a
/// process; everything that renders happens on the thread that made it.
class PluginRuntime {
public:
    /// Throws HostError: no plug-in, no start, no entries, or with `onGpu` no OpenGL.
    PluginRuntime(const Installation& installation, Console& console, bool onGpu);

    PluginLibrary& Plugin() { return *plugin; }
    HostServices& Services() { return services; }
    const Catalogue& Effects() const { return catalogue; }
    /// Null for CPU frames.
    GlDevice* Device() { return device.get(); }

private:
    std::unique_ptr<GlDevice> device;
    HostServices services;
    std::unique_ptr<PluginLibrary> plugin;
    Catalogue catalogue;
};

}  // namespace kelmo::host
