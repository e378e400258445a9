// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <mutex>
#include <vector>

#include "engine/device/gl_device.h"

namespace kelmo {

/// The devices of an engine: its own one, or one for each context of the host's that effects were
/// made in. Any thread may ask.
class GlDevices {
public:
    /// With an own context, which all threads use in turn.
    GlDevices(std::unique_ptr<GlContext> ownContext, const EngineLog& log);
    /// With the contexts of the host.
    explicit GlDevices(const EngineLog& log) : log(log) {}

    /// The device to make an effect with: that of the context which is current on this thread.
    /// Null, after a log line, without one.
    ///
    /// A device whose context is not this one and that no effect uses is let go of here: the host
    /// may have ended that context at any time, and took our objects along when it did.
    std::shared_ptr<GlDevice> Current();
    const EngineLog& Log() const { return log; }

private:
    struct HostDevice {
        void* context;
        std::shared_ptr<GlDevice> device;
    };

    const EngineLog log;
    std::shared_ptr<GlDevice> own;
    std::mutex mutex;
    std::vector<HostDevice> hostDevices;  // guarded
};

}  // namespace kelmo
